// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/AccountFixture.h"
#include "platform/FakeLoginManager.h"
#include "support/Dunst.h"

#include <QDateTime>

using namespace std::chrono_literals;

namespace burnwick {
namespace {

using test::usage;

struct NotifyingSession {
    test::Dunst m_dunst;
};

/// The real program over hours, which the test lets pass.
class DayOfUseTest : protected NotifyingSession, public test::AccountFixture {
protected:
    DayOfUseTest()
        : AccountFixture(m_dunst.bus()) {}

    void SetUp() override {
        if (!m_time.available())
            GTEST_SKIP() << "the clock of a program cannot be moved here";
        logIn();
        // A log in a project that is known is seen by the timer alone.
        std::string settings = contentOf(m_settings);
        test::writeFile(m_settings, settings.insert(1, R"("refreshRate":60,)"));
    }

    void pass(std::chrono::seconds time) {
        m_now = m_now.addSecs(time.count());
        m_time.advance(time);
    }
    [[nodiscard]] QByteArray stamp(std::chrono::seconds from) const {
        return m_now.addSecs(from.count()).toString(u"yyyy-MM-ddTHH:mm:ss.zzzZ").toLatin1();
    }
    /// A line of Claude Code's, written now.
    void log(const std::string &file, int input) {
        m_home.add(file, test::usageLine(stamp(0s).toStdString(), input, 0),
                   std::chrono::system_clock::now());
    }
    /// Exactly these since the server's start.
    testing::AssertionResult areShown(const QStringList &expected) const {
        if (waitFor([&] { return m_dunst.closeAll() == expected; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "shown are " << m_dunst.closeAll().join(u'\n').toStdString();
    }

    test::ShiftedTime m_time;
    QDateTime m_now = QDateTime::currentDateTimeUtc();
};

TEST_F(DayOfUseTest, AlertsComeOncePerWindowAndTheWindowResets) {
    const auto untilFullMinute = std::chrono::seconds(60 - m_now.time().second());
    const QByteArray first = stamp(2h + untilFullMinute);
    // The service computes it anew for each answer, and it wobbles.
    const QByteArray firstAgain = stamp(2h + untilFullMinute - 1s);
    const QByteArray second = stamp(7h + untilFullMinute);
    m_server.script("/api/oauth/usage", {usage(67, first), usage(84, firstAgain), usage(91, first),
                                         usage(104, firstAgain), usage(3, second)});
    log("project/morning.jsonl", 1'000'000);
    ASSERT_TRUE(startProgram(m_time));
    ASSERT_TRUE(itemShows("1.0M | $3.00 | s67%  ●"));
    EXPECT_TRUE(areShown({}));

    log("another-project/noon.jsonl", 400'000);
    EXPECT_TRUE(itemShows("1.4M | $4.20 | s67%  ●")) << "a new project is seen at once";
    log("project/noon.jsonl", 100'000);

    const QString warning = QStringLiteral("Quota Alert: You've used 84% of your 5-hour quota.");
    pass(5min);
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s84%  ●"));
    EXPECT_TRUE(areShown({warning}));
    m_dunst.end();
    ASSERT_TRUE(waitFor([this] { return !m_dunst.runs(); }));
    pass(5min);
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s91%  ●"));
    EXPECT_FALSE(m_dunst.runs()) << "said already";

    pass(5min);
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s104%  ●"));
    EXPECT_TRUE(waitFor([this] { return m_dunst.displayed() == 1; })) << "it was started again";
    const QString limit = m_dunst.closeAll().join(u'\n');
    EXPECT_TRUE(limit.startsWith(
        QStringLiteral("Rate Limit Reached: You've hit your rate limit. Quota resets in 1h 4")))
        << limit.toStdString();

    pass(2h);
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s3%  ●"));
    const QString reset = QStringLiteral("Session Reset: Your 5-hour quota has reset. You're ready to go!");
    EXPECT_TRUE(areShown({limit, reset}));
    EXPECT_TRUE(endsWhenTold(SIGTERM));

    // What was said stays said for the next start.
    m_server.script("/api/oauth/usage", {usage(84, first)});
    m_watcher.dropName();
    ASSERT_TRUE(startProgram(m_time));
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s84%  ●"));
    EXPECT_TRUE(areShown({limit, reset}));
}

TEST_F(DayOfUseTest, AfterASleepWhatIsDueIsDoneAtOnceAndAgainUntilTheNetworkIsBack) {
    test::ScriptedAnswer cut = usage(1);
    cut.ending = test::ScriptedAnswer::Ending::cut;
    m_server.script("/api/oauth/usage", {usage(67), cut, usage(3)});
    QProcessEnvironment environment = m_program.processEnvironment();
    environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), m_dunst.bus().address());
    environment.insert(QStringLiteral("FAKETIME_DONT_FAKE_MONOTONIC"), QStringLiteral("1"));
    m_program.setProcessEnvironment(environment);
    const FakeLoginManager manager(m_dunst.bus());
    ASSERT_TRUE(startProgram(m_time));
    ASSERT_TRUE(itemShows("0 | $0.00 | s67%  ●"));

    // The timers of the program have counted none of it.
    pass(8h);
    const auto questions = [this] { return m_server.requestsFor("/api/oauth/usage").size(); };
    EXPECT_TRUE(waitFor([&] {
        manager.prepareForSleep(false);
        return questions() > 1;
    }));
    EXPECT_TRUE(waitFor([&] { return questions() == 3; }));
    EXPECT_TRUE(itemShows("0 | $0.00 | s3%  ●"));
}

TEST_F(DayOfUseTest, ANewerReleaseIsLookedForOnceADay) {
    const std::string server = m_server.url().toString().toStdString();
    test::writeFile(m_settings, R"({"productBaseURL":")" + server + R"(","apiBaseURL":")" + server +
                                    R"(","statusBaseURL":")" + server + R"("})");
    m_server.script("/appcast.xml",
                    {test::answerOf(200, "<rss><channel><item><sparkle:shortVersionString>999.0"
                                         "</sparkle:shortVersionString></item></channel></rss>")});
    const auto checks = [this] { return m_server.requestsFor("/appcast.xml").size(); };
    ASSERT_TRUE(startProgram(m_time));
    EXPECT_TRUE(areShown(
        {QStringLiteral("Update Available: Burnwick 999.0 is available. Open Settings to update.")}));
    EXPECT_TRUE(endsWhenTold(SIGTERM));

    m_watcher.dropName();
    ASSERT_TRUE(startProgram(m_time));
    pass(12h);
    ASSERT_TRUE(itemShows("0 | $0.00 | s--  ●"));
    EXPECT_EQ(checks(), 1U);
    pass(13h);
    EXPECT_TRUE(waitFor([&] { return !title().isEmpty() && checks() == 2; }));
}

} // namespace
} // namespace burnwick
