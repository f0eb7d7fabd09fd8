// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "LogTreeWriter.h"
#include "ProgramOnDisplay.h"
#include "ResultTable.h"
#include "WindowWatch.h"

#include "support/FakeStatusNotifierWatcher.h"
#include "support/PrivateBus.h"
#include "support/VirtualDisplay.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

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

/// A home with its own settings: unreachable services, and the defaults otherwise.
class Settings {
public:
    Settings() {
        QFile file(m_directory.filePath(QStringLiteral("burnwick/burnwick.json")));
        if (!QDir(m_directory.path()).mkdir(QStringLiteral("burnwick")) || !file.open(QIODevice::WriteOnly))
            throw std::runtime_error("cannot write settings");
        file.write(R"({"apiBaseURL":"http://127.0.0.1:9","statusBaseURL":"http://127.0.0.1:9"})");
    }
    [[nodiscard]] QString path() const { return m_directory.path(); }

private:
    QTemporaryDir m_directory;
};

/// A desktop of the benchmark's own: a screen, a message bus and a status area.
struct Desktop {
    Desktop() {
        if (display.name().isEmpty() || bus.address().isEmpty())
            throw std::runtime_error("cannot start an X server and a message bus");
        bus.becomeSessionBus();
    }

    [[nodiscard]] QProcessEnvironment environment(const std::filesystem::path &home) const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), QString::fromStdString(home.string()));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), settings.path());
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), settings.path());
        environment.insert(QStringLiteral("DISPLAY"), display.name());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
        return environment;
    }

    Settings settings;
    test::VirtualDisplay display;
    PrivateBus bus;
};

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
    table.addFigure("start to the painted window", burnwick.window * 1000, "ms", 0);
    table.addAtMost("start to the painted window / empty window", burnwick.window / empty.window, 5, "x", 2);
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
    table.addFigure("wake-ups in a minute, window hidden", waitsInAMinute(), "", 0);
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
