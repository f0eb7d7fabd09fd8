// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/AccountFixture.h"
#include "platform/FakeNotificationServer.h"

#include <QDateTime>

using namespace std::chrono_literals;

namespace burnwick {
namespace {

using test::usage;

/// The real program over hours, which the test lets pass.
class DayOfUseTest : public test::AccountFixture {
protected:
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
    [[nodiscard]] QStringList notifications() const {
        QStringList texts;
        for (const auto &[number, popup] : m_notifications.popups)
            texts += popup.title + QLatin1String(": ") + popup.body;
        return texts;
    }

    test::ShiftedTime m_time;
    QDateTime m_now = QDateTime::currentDateTimeUtc();
    FakeNotificationServer m_notifications;
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
    EXPECT_EQ(notifications(), QStringList());

    log("another-project/noon.jsonl", 400'000);
    EXPECT_TRUE(itemShows("1.4M | $4.20 | s67%  ●")) << "a new project is seen at once";
    log("project/noon.jsonl", 100'000);

    const QString warning = QStringLiteral("Quota Alert: You've used 84% of your 5-hour quota.");
    pass(5min);
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s84%  ●"));
    EXPECT_TRUE(waitFor([&] { return notifications() == QStringList{warning}; }));
    pass(5min);
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s91%  ●"));
    EXPECT_EQ(notifications(), QStringList{warning}) << "said already";

    pass(5min);
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s104%  ●"));
    EXPECT_TRUE(waitFor([&] { return notifications().size() == 2; }));
    const QString limit =
        QStringLiteral("Rate Limit Reached: You've hit your rate limit. Quota resets in 1h 4");
    EXPECT_TRUE(notifications().last().startsWith(limit)) << notifications().join(u'\n').toStdString();

    pass(2h);
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s3%  ●"));
    EXPECT_TRUE(waitFor([&] {
        return notifications().contains(
            QStringLiteral("Session Reset: Your 5-hour quota has reset. You're ready to go!"));
    }));
    EXPECT_EQ(notifications().size(), 3) << notifications().join(u'\n').toStdString();
    EXPECT_TRUE(endsWhenTold(SIGTERM));

    // What was said stays said for the next start.
    m_server.script("/api/oauth/usage", {usage(84, first)});
    m_notifications.popups.clear();
    m_watcher.dropName();
    ASSERT_TRUE(startProgram(m_time));
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s84%  ●"));
    EXPECT_EQ(notifications(), QStringList());
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
    const QStringList told{
        QStringLiteral("Update Available: Burnwick 999.0 is available. Open Settings to update.")};
    EXPECT_TRUE(waitFor([&] { return notifications() == told; }))
        << notifications().join(u'\n').toStdString();
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
