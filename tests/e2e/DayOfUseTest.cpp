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
    // The service computes it anew for each answer, and it wobbles around a round instant.
    const auto firstReset = 2h + 30s - std::chrono::seconds(m_now.time().second() % 10);
    const QByteArray first = stamp(firstReset);
    const QByteArray firstAgain = stamp(firstReset + 1s);
    const QByteArray second = stamp(7h);
    m_server.script("/api/oauth/usage", {usage(67, first), usage(84, firstAgain), usage(91, first),
                                         usage(104, firstAgain), usage(3, second)});
    log("project/morning.jsonl", 1'000'000);
    ASSERT_TRUE(startProgram(m_time));
    ASSERT_TRUE(itemShows("1.0M | $3.00 | s67%  ●"));
    EXPECT_EQ(notifications(), QStringList());

    log("another-project/noon.jsonl", 400'000);
    EXPECT_TRUE(itemShows("1.4M | $4.20 | s67%  ●")) << "a new project is seen at once";
    log("project/noon.jsonl", 100'000);
    pass(1min);
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s67%  ●"));

    const QString warning = QStringLiteral("Quota Alert: You've used 84% of your 5-hour quota.");
    pass(4min);
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s84%  ●"));
    EXPECT_TRUE(waitFor([&] { return notifications() == QStringList{warning}; }));
    pass(5min);
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s91%  ●"));
    EXPECT_EQ(notifications(), QStringList{warning}) << "said already";

    const QString limit =
        QStringLiteral("Rate Limit Reached: You've hit your rate limit. Quota resets in 1h 45m.");
    pass(5min);
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s104%  ●"));
    EXPECT_TRUE(waitFor([&] {
        return notifications() == QStringList({warning, limit});
    })) << notifications().join(u'\n').toStdString();

    pass(2h);
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s3%  ●"));
    EXPECT_TRUE(waitFor([&] {
        return notifications().contains(
            QStringLiteral("Session Reset: Your 5-hour quota has reset. You're ready to go!"));
    }));
    EXPECT_EQ(notifications().size(), 3);
    EXPECT_TRUE(endsWhenTold(SIGTERM));

    // What was said stays said for the next start.
    m_server.script("/api/oauth/usage", {usage(84, first)});
    m_notifications.popups.clear();
    m_watcher.dropName();
    ASSERT_TRUE(startProgram(m_time));
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s84%  ●"));
    EXPECT_EQ(notifications(), QStringList());
}

} // namespace
} // namespace burnwick
