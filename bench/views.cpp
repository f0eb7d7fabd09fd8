// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT

// How long a change of the state takes to be seen: from the call that makes it to painted pixels, in this
// process and without a display.

#include "LogTreeWriter.h"
#include "ResultTable.h"

#include "ui/DashboardScenes.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <stdexcept>

using namespace burnwick;
using namespace burnwick::bench;

namespace {

using namespace std::chrono_literals;

constexpr int repetitions = 20;
constexpr std::int64_t entryCount = 1'000'000;

/// Counts how often a window's pixels were brought up to date.
class UpdateCount final : public QObject {
public:
    explicit UpdateCount(QWidget &window) { window.installEventFilter(this); }

    [[nodiscard]] int count() const { return m_count; }

protected:
    bool eventFilter(QObject *window, QEvent *event) override {
        if (event->type() != QEvent::UpdateRequest)
            return false;
        // Once the window has handled it, which paints.
        QMetaObject::invokeMethod(
            this, [this] { ++m_count; }, Qt::QueuedConnection);
        return QObject::eventFilter(window, event);
    }

private:
    int m_count = 0;
};

class Dashboard final : public test::DashboardFixture {
public:
    void TestBody() override {}

    void addEntries(std::int64_t count) {
        std::string lines;
        const std::string line = test::usageLine("2025-06-01T12:00:00.000Z", 100, 50, 10, 1'000);
        for (std::int64_t i = 0; i < count; ++i)
            lines += line;
        m_home.add("project/many.jsonl", lines, m_clock.now() - 48h);
        lines = test::usageLine("2025-06-10T11:00:00.000Z", 100, 50, 10, 1'000);
        m_home.add("project/today.jsonl", lines, m_clock.now());
    }

    /// The window over the connected state with so many more entries.
    void open(std::int64_t entries) {
        addHistory();
        if (entries > 0)
            addEntries(entries);
        logIn(67);
        settle();
        if (!waitFor([&] { return usage().historicalData.messageCount > entries; }, 1min))
            throw std::runtime_error("the history did not come");
        m_window.emplace(windowServices());
        m_window->show();
        m_updates.emplace(*m_window);
        for (int i = 0; i < 10; ++i)
            QCoreApplication::processEvents();
    }

    /// From the change to the pixels: the middle one of the times, since other programs disturb some.
    template <typename Change>
    double secondsToPixels(const Change &change) {
        std::vector<double> times;
        for (int i = 0; i < repetitions; ++i) {
            QTest::qWait(30); // until nothing of the last change is left to paint
            const int before = m_updates->count();
            QElapsedTimer time;
            time.start();
            change(i);
            while (m_updates->count() == before) {
                QCoreApplication::processEvents();
                if (time.hasExpired(10'000))
                    throw std::runtime_error("the window was not painted");
            }
            times.push_back(static_cast<double>(time.nsecsElapsed()) * 1e-9);
        }
        std::ranges::sort(times);
        return times[times.size() / 2];
    }

    /// Returns for how many seconds the event loop was busy at most while all logs of that home were read.
    double longestGapOfAReading(const std::filesystem::path &home) {
        // None is recent: start() itself reads those, before the first frame.
        m_clock.set(SystemClock().now() + 72h);
        qint64 longest = 0;
        for (int i = 0; i < 3; ++i) {
            AppState state(services(home));
            MainWindowView window({state, m_preferences, m_clock, m_scheduler, [] { return 30; }});
            window.show();
            QTest::qWait(100); // until the window is painted
            QElapsedTimer sinceBeat;
            QTimer heart;
            heart.setTimerType(Qt::PreciseTimer);
            heart.callOnTimeout([&] {
                longest = std::max(longest, sinceBeat.nsecsElapsed());
                sinceBeat.restart();
            });
            state.start();
            sinceBeat.start();
            heart.start(1ms);
            if (!waitFor([&] { return state.snapshot().usage.historyReadAt.has_value(); }, 2min))
                throw std::runtime_error("the logs were not read");
            QTest::qWait(100);
        }
        return static_cast<double>(longest) * 1e-9;
    }

    AppState &state() { return m_state; }
    void grow(int i) {
        m_home.add("project/more" + std::to_string(i) + ".jsonl",
                   test::usageLine("2025-06-10T11:59:00.000Z", 1'000, 500), m_clock.now());
        m_state.refreshLocalData();
    }

private:
    std::optional<MainWindowView> m_window;
    std::optional<UpdateCount> m_updates;
};

void measure(const std::filesystem::path &logs, ResultTable &table) {
    {
        Dashboard dashboard;
        dashboard.open(0);
        table.addAtMost("state change to pixels", 1000 * dashboard.secondsToPixels([&](int i) {
            dashboard.state().setTimeFilter(i % 2 == 0 ? TimeFilter::sevenDays : TimeFilter::all);
        }),
                        8, "ms", 1);
        table.addFigure("a log's growth to pixels, its reading included",
                        1000 * dashboard.secondsToPixels([&](int i) { dashboard.grow(i); }), "ms", 1);
    }
    Dashboard dashboard;
    dashboard.open(entryCount);
    table.addAtMost("All to 7d and back with 1 million entries", 1000 * dashboard.secondsToPixels([&](int i) {
        dashboard.state().setTimeFilter(i % 2 == 0 ? TimeFilter::sevenDays : TimeFilter::all);
    }),
                    100, "ms", 1);
    const std::filesystem::path recent = logs / "recent-gigabyte";
    prepareTree(TreeKind::sessions, 1'000'000'000, recent);
    table.addAtMost("longest gap of the event loop, 1 GB of logs being read",
                    1000 * Dashboard().longestGapOfAReading(recent), 16, "ms", 1);
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    if (argc != 2) {
        std::cerr << "Usage: burnwick-bench-views LOGS-DIRECTORY\n"
                     "The logs are made there unless they are there already.\n";
        return EXIT_FAILURE;
    }
    try {
        ResultTable table;
        measure(argv[1], table);
        return table.anyMissed() ? EXIT_FAILURE : EXIT_SUCCESS;
    } catch (const std::exception &error) {
        std::cerr << "burnwick-bench-views: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
