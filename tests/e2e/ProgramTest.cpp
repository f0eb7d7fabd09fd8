// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/FakeStatusNotifierWatcher.h"
#include "support/LogTreeFixture.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QProcess>

#include <csignal>

namespace burnwick {
namespace {

using test::usageLine;

/// The real program on a home of its own, seen from the status area of a desktop.
class ProgramTest : public testing::Test {
protected:
    ~ProgramTest() override {
        m_program.kill();
        m_program.waitForFinished();
    }

    bool startProgram() {
        m_watcher.takeName("panel-6-systray");
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const QString home = QString::fromStdString(m_home.path().string());
        environment.insert(QStringLiteral("HOME"), home);
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/.config"));
        m_program.setProcessEnvironment(environment);
        m_program.setProcessChannelMode(QProcess::ForwardedChannels);
        m_program.start(QStringLiteral(BURNWICK_PROGRAM), QStringList());
        return m_watcher.waitForItems(1);
    }
    bool itemShows(const char *title) {
        return waitFor([&] {
            return m_watcher.readItem().value(QStringLiteral("Title")).toString() == QString::fromUtf8(title);
        });
    }

    test::LogHome m_home;
    FakeStatusNotifierWatcher m_watcher;
    QProcess m_program;
};

TEST_F(ProgramTest, ShowsTheTitleFollowsNewLogsAndEndsWhenTold) {
    const Instant now = std::chrono::system_clock::now();
    m_home.add("project/session.jsonl", usageLine("2025-06-10T12:00:00.0Z", 1'000'000, 100'000), now);
    ASSERT_TRUE(startProgram());
    EXPECT_TRUE(itemShows("1.1M | $4.50 | s--  ●"));

    m_home.add("other.jsonl", usageLine("2025-06-10T12:00:00.0Z", 100'000, 0), now);
    EXPECT_TRUE(itemShows("1.2M | $4.80 | s--  ●"));

    EXPECT_EQ(m_watcher.callItem(QStringLiteral("Activate"), {0, 0}).type(), QDBusMessage::ReplyMessage);
    ::kill(static_cast<pid_t>(m_program.processId()), SIGTERM);
    ASSERT_TRUE(m_program.waitForFinished(10'000));
    EXPECT_EQ(m_program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(m_program.exitCode(), 0);
}

TEST_F(ProgramTest, RunsWithoutLogsAndLeavesTheHomeAlone) {
    ASSERT_TRUE(startProgram());
    EXPECT_TRUE(itemShows("0 | $0.00 | s--  ●"));
    ::kill(static_cast<pid_t>(m_program.processId()), SIGINT);
    ASSERT_TRUE(m_program.waitForFinished(10'000));
    EXPECT_EQ(m_program.exitCode(), 0);
    EXPECT_FALSE(std::filesystem::exists(m_home.path() / ".claude"));
    EXPECT_FALSE(std::filesystem::exists(m_home.path() / ".config" / "burnwick"));
}

TEST_F(ProgramTest, AnOverflowOfTheSumsIsSaidInOneLine) {
    const Instant now = std::chrono::system_clock::now();
    const std::string half = usageLine("2025-06-10T12:00:00.0Z", INT64_MAX, 0);
    m_home.add("session.jsonl", half + half, now);
    m_program.setProcessChannelMode(QProcess::SeparateChannels);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), QString::fromStdString(m_home.path().string()));
    m_program.setProcessEnvironment(environment);
    m_program.start(QStringLiteral(BURNWICK_PROGRAM), QStringList());
    ASSERT_TRUE(m_program.waitForFinished(10'000));
    EXPECT_EQ(m_program.exitCode(), 70);
    EXPECT_EQ(m_program.readAllStandardError().count("more than 64 bits"), 1);
}

} // namespace
} // namespace burnwick
