// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "demo/FilesIn.h"
#include "e2e/ProgramFixture.h"
#include "support/FakeApplication.h"

namespace burnwick {
namespace {

using test::filesIn;

/// The demonstration as a user starts it, whose home is the fixture's.
class DemoProgramTest : public test::ProgramFixture {
protected:
    DemoProgramTest() {
        QProcessEnvironment environment = m_program.processEnvironment();
        environment.insert(QStringLiteral("TMPDIR"), QString::fromStdString(m_temporary.path().string()));
        m_program.setProcessEnvironment(environment);
    }
    /// The process that shows the status item.
    [[nodiscard]] pid_t itemOwner() const {
        return m_watcher.registeredItems().value(0).section(QLatin1Char('-'), 1, 1).toInt();
    }

    test::TemporaryDirectory m_temporary;
};

TEST_F(DemoProgramTest, LeavesTheUsersInstanceAndFilesAlone) {
    const FakeApplication usersInstance;
    const auto before = filesIn(m_home.path());
    ASSERT_TRUE(startProgram());
    EXPECT_TRUE(waitFor([&] { return title().contains(QStringLiteral("s67%")); })) << title().toStdString();
    EXPECT_TRUE(endsWhenTold(SIGINT));
    EXPECT_TRUE(usersInstance.requests().isEmpty());
    EXPECT_EQ(filesIn(m_home.path()), before);
    EXPECT_TRUE(std::filesystem::is_empty(m_temporary.path())) << "the sample home stayed";
}

TEST_F(DemoProgramTest, EndsWithTheProgram) {
    ASSERT_TRUE(startProgram());
    const pid_t program = itemOwner();
    ASSERT_GT(program, 0);
    ASSERT_NE(program, m_program.processId());
    ::kill(program, SIGTERM);
    EXPECT_TRUE(m_program.waitForFinished(5'000));
    EXPECT_EQ(m_program.exitCode(), 0);
    EXPECT_TRUE(std::filesystem::is_empty(m_temporary.path())) << "the sample home stayed";
}

} // namespace
} // namespace burnwick
