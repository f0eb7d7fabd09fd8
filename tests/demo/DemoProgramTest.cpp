// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/ProgramFixture.h"
#include "support/FakeApplication.h"

namespace burnwick {
namespace {

/// The demonstration, started by a user whose home is the fixture's.
class DemoProgramTest : public test::ProgramFixture {
protected:
    DemoProgramTest() {
        set({{"TMPDIR", QString::fromStdString(m_temporary.path().string())},
             {"CLAUDE_CONFIG_DIR", QString::fromStdString(m_users.path().string())}});
        // More tokens than the demonstration has.
        test::writeFile(m_users.path() / "projects" / "log.jsonl",
                        test::usageLine("2026-02-01T12:00:00Z", 5'000'000'000'000, 0));
    }

    test::TemporaryDirectory m_temporary;
    test::TemporaryDirectory m_users;
};

TEST_F(DemoProgramTest, LeavesTheUsersInstanceAndFilesAlone) {
    const FakeApplication usersInstance;
    ASSERT_TRUE(startProgram());
    EXPECT_TRUE(waitFor([&] { return title().contains(QStringLiteral("s67%")); })) << title().toStdString();
    EXPECT_LT(title().indexOf(u' '), 8) << title().toStdString();
    EXPECT_TRUE(endsAt(SIGINT));
    EXPECT_TRUE(usersInstance.requests().isEmpty());
    EXPECT_TRUE(std::filesystem::is_empty(m_home.path()));
    EXPECT_TRUE(std::filesystem::is_empty(m_temporary.path())) << "the sample home remains";
}

TEST_F(DemoProgramTest, EndsWithTheProgram) {
    ASSERT_TRUE(startProgram());
    const pid_t itemOwner = m_watcher.registeredItems().value(0).section(u'-', 1, 1).toInt();
    ASSERT_GT(itemOwner, 0);
    ASSERT_NE(itemOwner, m_program.processId());
    ::kill(itemOwner, SIGTERM);
    EXPECT_TRUE(m_program.waitForFinished(5'000));
    EXPECT_EQ(m_program.exitCode(), 0);
    EXPECT_TRUE(std::filesystem::is_empty(m_temporary.path())) << "the sample home remains";
}

TEST_F(DemoProgramTest, RunsTheProgramThatIsNamed) {
    launch({QStringLiteral("--program"), QStringLiteral("/bin/false")});
    ASSERT_TRUE(m_program.waitForFinished(5'000));
    EXPECT_EQ(m_program.exitCode(), 1);
}

} // namespace
} // namespace burnwick
