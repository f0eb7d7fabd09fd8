// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/AccountFixture.h"
#include "support/FakeNotificationServer.h"

#include <QDir>

#include <optional>

using namespace std::chrono_literals;

namespace burnwick {
namespace {

using test::ScriptedAnswer;
using test::usage;
using test::usageEnding;
using Ending = ScriptedAnswer::Ending;

struct Needs {
    qsizetype descriptors = 0;
    qsizetype threads = 0;
    qint64 kilobytes = 0; ///< of anonymous memory

    friend std::ostream &operator<<(std::ostream &out, const Needs &needs) {
        return out << needs.descriptors << " descriptors, " << needs.threads << " threads, "
                   << needs.kilobytes << " KiB";
    }
};

/// Each failure of the server, between answers with other figures.
const std::vector<ScriptedAnswer> &answers() {
    static const std::vector<ScriptedAnswer> all{
        usage(10),
        {500, "<html>down</html>"},
        usage(85),
        {401, "{}"},
        usage(101),
        usageEnding(Ending::cut),
        {429, "{}"},
        usageEnding(Ending::stall),
        usage(3),
        usageEnding(Ending::trickle),
        {200, "[1,2"},
        usageEnding(Ending::endless),
        usage(64),
        usageEnding(Ending::silence),
        usageEnding(Ending::hangUp),
        {302, {}, {{"Location", "http://127.0.0.1:1/"}}},
        usage(90),
        usageEnding(Ending::raw),
    };
    return all;
}

/// The real program for a week of shifted time. The nights are skipped, as by a suspended machine. The
/// message bus does not end, because that would end the session; see StatusItemWithoutBusTest.cpp.
class WeekOfUseTest : public test::TimedFixture {
protected:
    WeekOfUseTest() {
        writeSettingsWithUpdates();
        m_server.script("/api/oauth/token", {{200, R"({"access_token":"new-token","expires_in":9999999})"}});
        m_notifications.emplace(QStringLiteral("soak-notifications"));
    }

    /// Waits until the program has requested the quota again, which an unanswered request delays by a few
    /// minutes.
    bool passUntilRequest(std::chrono::seconds time) {
        const std::size_t before = usageRequests();
        for (int attempt = 0; attempt < 5; ++attempt) {
            pass(attempt == 0 ? time : 5min);
            // Reading the title wakes the program, whose timers then see the new time.
            if (waitFor([&] { return !title().isEmpty() && usageRequests() > before; }, 2s))
                return true;
        }
        return false;
    }
    bool shows42() {
        return waitFor([this] { return title().contains(QStringLiteral("s42%")); });
    }

    /// Adds a project and removes an old one, so that their number stays the same.
    void changeLogs() {
        constexpr int kept = 12;
        const auto name = [](int number) { return "project-" + std::to_string(number); };
        const Instant modified = Instant(std::chrono::milliseconds(m_now.toMSecsSinceEpoch()));
        const std::string line = test::usageLine(stamp(0s).toStdString(), 1000, 10);
        m_home.add(name(++m_projects) + "/session.jsonl", line + line, modified);
        m_home.add(name(m_projects) + "/agent.jsonl", line, modified);
        std::filesystem::remove_all(m_home.projects() / name(m_projects - kept));
    }
    void changeSurroundings(int step) {
        const std::size_t next = static_cast<std::size_t>(step) % answers().size();
        m_server.script("/api/oauth/usage", {answers()[next], usage(20 + step % 80, stamp(2h))});
        changeLogs();
        if (step % 12 == 4) {
            m_shown += m_notifications->popups.size();
            m_notifications->leave();
            m_notifications.emplace(QStringLiteral("soak-notifications-%1").arg(step));
        }
        if (step % 12 == 9) {
            m_watcher.dropName();
            m_watcher.takeName("panel-6-systray");
            EXPECT_TRUE(m_watcher.waitForItems(1)) << "the item did not register again";
        }
    }

    [[nodiscard]] Needs needs() const {
        const QDir process(QStringLiteral("/proc/%1").arg(m_program.processId()));
        const auto entriesIn = [&process](const char *folder) {
            constexpr auto all = QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot;
            return QDir(process.filePath(QLatin1String(folder))).entryList(all).size();
        };
        QFile memory(process.filePath(QStringLiteral("smaps_rollup")));
        if (!memory.open(QIODevice::ReadOnly))
            return {};
        const QByteArray text = memory.readAll();
        const QByteArray figure = text.mid(text.indexOf("\nAnonymous:") + 11).trimmed();
        return {entriesIn("fd"), entriesIn("task"), figure.split(' ').first().toLongLong()};
    }
    /// Returns the least needs within a second after an answer, without idle connections and idle threads;
    /// waits longer for the threads and descriptors of an earlier call, because a busy machine ends threads
    /// late.
    Needs needsAtRest(const std::optional<Needs> &earlier = {}) {
        m_server.script("/api/oauth/usage", {usage(42, stamp(2h))});
        EXPECT_TRUE(passUntilRequest(5min));
        EXPECT_TRUE(shows42());
        m_server.endConnections();
        pass(4min); // idle threads end before the next request
        Needs least = needs();
        static_cast<void>(waitFor(
            [&] {
                static_cast<void>(title());
                const Needs now = needs();
                least.descriptors = std::min(least.descriptors, now.descriptors);
                least.threads = std::min(least.threads, now.threads);
                least.kilobytes = std::min(least.kilobytes, now.kilobytes);
                return earlier && least.descriptors <= earlier->descriptors &&
                       least.threads <= earlier->threads && least.kilobytes <= earlier->kilobytes;
            },
            earlier ? 5s : 1s));
        return least;
    }

    std::optional<FakeNotificationServer> m_notifications;
    int m_projects = 0;
    std::size_t m_shown = 0; ///< notifications
};

TEST_F(WeekOfUseTest, NeedsNoMoreAtItsEndThanAfterItsFirstHour) {
    m_server.script("/api/oauth/usage", {usage(42, stamp(2h))});
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(shows42());
    EXPECT_EQ(m_watcher.callItem(QStringLiteral("Activate"), {0, 0}).type(), QDBusMessage::ReplyMessage);

    int step = 0;
    // Each failure once, and as many logs as there are later.
    for (; step < static_cast<int>(answers().size()); ++step) {
        changeSurroundings(step);
        ASSERT_TRUE(passUntilRequest(5min)) << "no request after step " << step;
    }
    const Needs first = needsAtRest();
    const QDateTime monday = m_now;
    while (monday.daysTo(m_now) < 7) {
        changeSurroundings(++step);
        const bool isNight = step % 16 == 0;
        ASSERT_TRUE(passUntilRequest(isNight ? 9h : 1h)) << "no request after step " << step;
    }
    const Needs last = needsAtRest(first);
    SCOPED_TRACE("first " + testing::PrintToString(first) + "; last " + testing::PrintToString(last));
    ASSERT_GT(first.descriptors, 3);
    EXPECT_LE(last.descriptors, first.descriptors);
    EXPECT_LE(last.threads, first.threads);
    EXPECT_LT(last.kilobytes, first.kilobytes + 2 * 1024);
    EXPECT_GE(m_server.requestsFor("/appcast.xml").size(), 5U);
    EXPECT_GE(m_shown, 3U);
    EXPECT_FALSE(title().startsWith(QStringLiteral("0 "))) << "the logs are no longer read";
    EXPECT_TRUE(endsAt(SIGTERM));
}

} // namespace
} // namespace burnwick
