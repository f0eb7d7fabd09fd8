// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "BenchDesktop.h"
#include "LogTreeWriter.h"
#include "ProgramOnDisplay.h"
#include "ResultTable.h"
#include "WindowWatch.h"
#include "live.h"

#include "support/FakeStatusNotifierWatcher.h"

#include <QtCore/QCoreApplication>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <limits>
#include <span>
#include <stdexcept>

using namespace burnwick;
using namespace burnwick::bench;

namespace {

using std::chrono::seconds;

constexpr double mebibyte = 1 << 20;
constexpr double never = std::numeric_limits<double>::infinity();
constexpr std::string_view usage =
    "Usage: burnwick-bench-desktop LOGS-DIRECTORY BURNWICK EMPTY-WINDOW REPETITIONS\n"
    "The logs are made there unless they are there already.\n";

struct StartTimes {
    double window = never;     ///< seconds from the process's start to the window's first pixels
    double statusItem = never; ///< to the item in the status area
};

StartTimes leastOf(const StartTimes &a, const StartTimes &b) {
    return {std::min(a.window, b.window), std::min(a.statusItem, b.statusItem)};
}

StartTimes startOnce(Desktop &desktop, const QString &program, const std::filesystem::path &home,
                     bool hasStatusItem) {
    FakeStatusNotifierWatcher watcher(desktop.bus);
    watcher.takeName("panel-6-systray");
    ProgramOnDisplay running(program, desktop.environment(home));
    StartTimes times;
    const WindowWatch watch(desktop.display.name(), [&] { times.window = running.secondsSinceStart(); });
    running.start();
    runUntil(
        [&] {
            if (times.statusItem == never && !watcher.registeredItems().isEmpty())
                times.statusItem = running.secondsSinceStart();
            return times.window != never && (!hasStatusItem || times.statusItem != never);
        },
        "the program's start");
    watcher.dropName();
    return times;
}

void measureStart(Desktop &desktop, const QString &program, const QString &emptyWindow,
                  const std::filesystem::path &home, int repetitions, ResultTable &table) {
    StartTimes burnwick, empty;
    for (int i = 0; i < repetitions; ++i) {
        empty = leastOf(empty, startOnce(desktop, emptyWindow, home, false));
        burnwick = leastOf(burnwick, startOnce(desktop, program, home, true));
    }
    table.addFigure("start to an empty window", empty.window * 1000, "ms", 0);
    table.addFigure("start to the status item, 100 MB of recent logs", burnwick.statusItem * 1000, "ms", 0);
    table.addAtMost("start to the status item / empty window", burnwick.statusItem / empty.window, 5, "x", 2);
    table.addFigure("start to the painted window, logs known", burnwick.window * 1000, "ms", 0);
    table.addAtMost("start to the painted window / empty window", burnwick.window / empty.window, 2.5, "x",
                    2);
}

void measureMemory(Desktop &desktop, const QString &program, const QString &emptyWindow,
                   const std::filesystem::path &home, ResultTable &table) {
    const auto memoryOf = [&](const QString &name) {
        ProgramOnDisplay running(name, desktop.environment(home));
        bool painted = false;
        const WindowWatch watch(desktop.display.name(), [&] { painted = true; });
        running.start();
        runUntil([&] { return painted; }, "the window");
        running.waitUntilIdle();
        return std::pair(static_cast<double>(running.residentBytes()) / mebibyte,
                         static_cast<double>(running.privateBytes()) / mebibyte);
    };
    const auto [emptyResident, emptyPrivate] = memoryOf(emptyWindow);
    const auto [resident, own] = memoryOf(program);
    table.addFigure("resident memory, empty window", emptyResident, "MiB", 1);
    table.addFigure("resident memory, 200 MB of history", resident, "MiB", 1);
    table.addAtMost("resident memory over the empty window", resident - emptyResident, 40, "MiB", 1);
    table.addFigure("private memory over the empty window", own - emptyPrivate, "MiB", 1);
}

/// A minute has one tick of the local-log timer, which is not counted, and with the window visible one of the
/// texts that tell of time.
void measureWakeUps(Desktop &desktop, const QString &program, const std::filesystem::path &home,
                    ResultTable &table) {
    ProgramOnDisplay running(program, desktop.environment(home));
    bool painted = false;
    const WindowWatch watch(desktop.display.name(), [&] { painted = true; });
    running.start();
    runUntil([&] { return painted; }, "the window");
    const auto waitsInAMinute = [&running] {
        running.waitUntilIdle();
        return static_cast<double>(running.wakeUpsWithin(seconds(60)));
    };
    table.addFigure("wake-ups in a minute, window visible", waitsInAMinute(), "", 0);
    desktop.display.close("Burnwick");
    runUntil([&] { return !desktop.display.shows("Burnwick"); }, "the window to close");
    // Threads of Qt's that helped at the start end after half a minute.
    static_cast<void>(waitsInAMinute());
    table.addAtMost("wake-ups in a minute, window hidden", waitsInAMinute(), 1, "", 0);
}

int run(std::span<char *> arguments) {
    const std::filesystem::path logs = arguments[0];
    const QString program = QString::fromLocal8Bit(arguments[1]);
    const QString emptyWindow = QString::fromLocal8Bit(arguments[2]);
    const int repetitions = std::max(1, std::atoi(arguments[3]));
    prepareTree(TreeKind::sessions, 100'000'000, logs / "recent");
    prepareTree(TreeKind::sessions, 200'000'000, logs / "history");
    makeRecent(logs / "recent");

    Desktop desktop;
    ResultTable table;
    measureStart(desktop, program, emptyWindow, logs / "recent", repetitions, table);
    measureMemory(desktop, program, emptyWindow, logs / "history", table);
    measureWakeUps(desktop, program, logs / "history", table);
    measureLiveLines(desktop, program, logs, table);
    return table.anyMissed() ? EXIT_FAILURE : EXIT_SUCCESS;
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const std::span<char *> arguments(argv + 1, argv + argc);
    if (arguments.size() != 4) {
        std::cerr << usage;
        return EXIT_FAILURE;
    }
    try {
        return run(arguments);
    } catch (const std::exception &error) {
        std::cerr << "burnwick-bench-desktop: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
