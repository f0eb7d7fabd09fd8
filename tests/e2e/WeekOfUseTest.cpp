// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/AccountFixture.h"
#include "support/FakeNotificationServer.h"

#include <QDateTime>
#include <QDir>

#include <deque>
#include <optional>

using namespace std::chrono_literals;

namespace burnwick {
namespace {

using test::answerOf;
using test::ScriptedAnswer;
using test::usage;
using Ending = ScriptedAnswer::Ending;

struct Needs {
    qsizetype descriptors = 0;
    qsizetype threads = 0;
    qint64 kilobytes = 0; ///< of memory that is no file's; of files others may have a share or not
};

std::ostream &operator<<(std::ostream &out, const Needs &needs) {
    return out << needs.descriptors << " descriptors, " << needs.threads << " threads, " << needs.kilobytes
               << " KiB";
}

ScriptedAnswer endingWith(Ending ending) {
    ScriptedAnswer answer = usage(50);
    answer.ending = ending;
    return answer;
}

/// Every way in which the server can fail, between answers that say something new.
const std::vector<ScriptedAnswer> &answers() {
    static const std::vector<ScriptedAnswer> all{
        usage(10),
        answerOf(500, "<html>down</html>"),
        usage(85),
        answerOf(401, "{}"),
        usage(101),
        endingWith(Ending::cut),
        answerOf(429, "{}"),
        endingWith(Ending::stall),
        usage(3),
        endingWith(Ending::trickle),
        answerOf(200, "[1,2"),
        endingWith(Ending::endless),
        usage(64),
        endingWith(Ending::silence),
        endingWith(Ending::hangUp),
        test::redirectTo(QUrl(QStringLiteral("http://127.0.0.1:1/"))),
        usage(90),
        endingWith(Ending::raw),
    };
    return all;
}

/// The real program for a week, of which the test lets the hours pass; it jumps over the nights as a machine
/// that is suspended does. Not in it is the end of the message bus, because with it the session ends: the
/// program goes on without its status item and its notifications (StatusItemWithoutBusTest.cpp).
class WeekOfUseTest : public test::AccountFixture {
protected:
    void SetUp() override {
        if (!m_time.available())
            GTEST_SKIP() << "the clock of a program cannot be moved here";
        logIn();
        std::string settings = contentOf(m_settings);
        test::writeFile(
            m_settings,
            settings.insert(1, R"("productBaseURL":")" + m_server.url().toString().toStdString() + R"(",)"));
        m_server.script("/api/oauth/token",
                        {answerOf(200, R"({"access_token":"new-token","expires_in":9999999})")});
        m_notifications.emplace(QStringLiteral("soak-notifications"));
    }

    [[nodiscard]] std::size_t usageRequests() const {
        return m_server.requestsFor("/api/oauth/usage").size();
    }
    /// Until the program has asked for the quota again. A question that hung takes a few minutes more.
    bool pass(std::chrono::seconds time) {
        const std::size_t before = usageRequests();
        for (int attempt = 0; attempt < 5; ++attempt) {
            m_time.advance(attempt == 0 ? time : 5min);
            m_now = m_now.addSecs((attempt == 0 ? time : 5min).count());
            // Reading the item wakes the program, which then notices how late it is.
            const auto asked = [&] { return !title().isEmpty() && usageRequests() > before; };
            if (waitFor(asked, 2s))
                return true;
        }
        return false;
    }
    [[nodiscard]] QByteArray stamp(std::chrono::seconds from) const {
        return m_now.addSecs(from.count()).toString(u"yyyy-MM-ddTHH:mm:ss.zzzZ").toLatin1();
    }

    /// A project comes and an old one goes, so that there are always as many.
    void changeLogs() {
        constexpr std::size_t kept = 12;
        const std::string project = "project-" + std::to_string(++m_projects);
        const Instant modified = Instant(std::chrono::milliseconds(m_now.toMSecsSinceEpoch()));
        const std::string line = test::usageLine(stamp(0s).toStdString(), 1000, 10);
        m_home.add(project + "/session.jsonl", line + line, modified);
        m_home.add(project + "/agent.jsonl", line, modified);
        m_logs.push_back(project);
        if (m_logs.size() <= kept)
            return;
        std::filesystem::remove_all(m_home.projects() / m_logs.front());
        m_logs.pop_front();
    }
    void changeSurroundings(int step) {
        const std::size_t next = static_cast<std::size_t>(step) % answers().size();
        m_server.script("/api/oauth/usage", {answers()[next], usage(20 + step % 80, stamp(2h))});
        changeLogs();
        if (step % 12 == 4) {
            m_said += m_notifications->popups.size();
            m_notifications->leave();
            m_notifications.emplace(QStringLiteral("soak-notifications-%1").arg(step));
        }
        if (step % 12 == 9) {
            m_watcher.dropName();
            m_watcher.takeName("panel-6-systray");
            EXPECT_TRUE(m_watcher.waitForItems(1)) << "the item did not come back";
        }
    }

    [[nodiscard]] QString processFile(const char *name) const {
        return QStringLiteral("/proc/%1/%2").arg(m_program.processId()).arg(QLatin1String(name));
    }
    [[nodiscard]] qsizetype entriesIn(const char *folder) const {
        constexpr auto all = QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot;
        return QDir(processFile(folder)).entryList(all).size();
    }
    [[nodiscard]] Needs needs() const {
        QFile memory(processFile("smaps_rollup"));
        if (!memory.open(QIODevice::ReadOnly))
            return {};
        qint64 kilobytes = 0;
        for (const QByteArray &line : memory.readAll().split('\n')) {
            if (line.startsWith("Anonymous:"))
                kilobytes = line.mid(10).trimmed().split(' ').first().toLongLong();
        }
        return {entriesIn("fd"), entriesIn("task"), kilobytes};
    }
    /// The least of what it is seen to need once an answer has come and what that took is given back.
    Needs needsAtRest() {
        m_server.script("/api/oauth/usage", {usage(42, stamp(2h))});
        EXPECT_TRUE(pass(5min));
        EXPECT_TRUE(waitFor([&] { return title().contains(QStringLiteral("s42%")); }));
        // The program keeps a few connections, as many as it had requests at once.
        m_server.endConnections();
        // Threads that wait for more work give up before the next question.
        constexpr auto patience = 4min;
        m_time.advance(patience);
        m_now = m_now.addSecs(std::chrono::seconds(patience).count());
        Needs least = needs();
        static_cast<void>(waitFor(
            [&] {
                static_cast<void>(title());
                const Needs now = needs();
                least.descriptors = std::min(least.descriptors, now.descriptors);
                least.threads = std::min(least.threads, now.threads);
                least.kilobytes = std::min(least.kilobytes, now.kilobytes);
                return false;
            },
            1s));
        return least;
    }

    test::ShiftedTime m_time;
    QDateTime m_now = QDateTime::currentDateTimeUtc();
    std::optional<FakeNotificationServer> m_notifications;
    std::deque<std::string> m_logs;
    int m_projects = 0;
    std::size_t m_said = 0; ///< notifications
};

TEST_F(WeekOfUseTest, NeedsNoMoreAtItsEndThanAfterItsFirstHour) {
    m_server.script("/api/oauth/usage", {usage(42, stamp(2h))});
    ASSERT_TRUE(startProgram(m_time));
    ASSERT_TRUE(waitFor([&] { return title().contains(QStringLiteral("s42%")); }));
    EXPECT_EQ(m_watcher.callItem(QStringLiteral("Activate"), {0, 0}).type(), QDBusMessage::ReplyMessage);

    int step = 0;
    // Each kind of trouble once, and as many logs as there will be.
    for (; step < static_cast<int>(answers().size()); ++step) {
        changeSurroundings(step);
        ASSERT_TRUE(pass(5min)) << "not asked again after step " << step;
    }
    const Needs first = needsAtRest();
    const QDateTime monday = m_now;
    while (monday.daysTo(m_now) < 7) {
        changeSurroundings(++step);
        const bool isNight = step % 16 == 0;
        ASSERT_TRUE(pass(isNight ? std::chrono::seconds(9h) : std::chrono::seconds(1h)))
            << "not asked again after step " << step;
    }
    const Needs last = needsAtRest();
    SCOPED_TRACE("first " + testing::PrintToString(first) + "; last " + testing::PrintToString(last));
    ASSERT_GT(first.descriptors, 3);
    EXPECT_LE(last.descriptors, first.descriptors);
    EXPECT_LE(last.threads, first.threads);
    EXPECT_LT(last.kilobytes, first.kilobytes + 2 * 1024);
    EXPECT_GE(m_server.requestsFor("/appcast.xml").size(), 5U);
    EXPECT_GE(m_said, 3U);
    EXPECT_FALSE(title().startsWith(QStringLiteral("0 "))) << "the logs are not read any more";
    EXPECT_TRUE(endsWhenTold(SIGTERM));
}

} // namespace
} // namespace burnwick
