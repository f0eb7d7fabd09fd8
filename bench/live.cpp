// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "live.h"

#include "LogTreeWriter.h"
#include "ProgramOnDisplay.h"
#include "WindowWatch.h"

#include "support/FakeStatusNotifierWatcher.h"
#include "support/LogTreeFixture.h"

#include <algorithm>
#include <fstream>

namespace burnwick::bench {

namespace {

namespace fs = std::filesystem;

/// A home whose logs are links to those of another one, except for one that is its own.
class LinkedHome {
public:
    explicit LinkedHome(const fs::path &original) {
        const auto size = [](const fs::path &file) { return fs::file_size(file); };
        std::vector<fs::path> files;
        for (const auto &entry : fs::recursive_directory_iterator(original / ".claude")) {
            if (entry.is_regular_file())
                files.push_back(entry.path());
        }
        // One of middle size.
        const auto middle = files.begin() + static_cast<std::ptrdiff_t>(files.size() / 2);
        std::ranges::nth_element(files, middle, {}, size);
        for (const fs::path &file : files) {
            const fs::path here = m_home.path() / fs::relative(file, original);
            fs::create_directories(here.parent_path());
            if (file == *middle)
                fs::copy_file(file, log = here);
            else
                fs::create_symlink(file, here);
        }
    }
    [[nodiscard]] const fs::path &path() const { return m_home.path(); }

    /// Appends a line with a million tokens, which the title shows.
    void append() const {
        std::ofstream(log, std::ios::app) << test::usageLine("2026-01-01T00:00:00.000Z", 1'000'000, 1);
    }

    fs::path log;

private:
    test::TemporaryDirectory m_home;
};

} // namespace

void measureLiveLines(Desktop &desktop, const QString &program, const std::filesystem::path &logs,
                      ResultTable &table) {
    prepareTree(TreeKind::sessions, 1'000'000'000, logs / "sessions");
    const LinkedHome home(logs / "sessions");
    FakeStatusNotifierWatcher watcher(desktop.bus);
    watcher.takeName("panel-6-systray");
    ProgramOnDisplay running(program, desktop.environment(home.path()));
    running.start();
    runUntil([&] { return !watcher.registeredItems().isEmpty(); }, "the status item");
    running.waitUntilIdle();
    table.addFigure("resident memory, 1 GB of history",
                    static_cast<double>(running.residentBytes()) / (1 << 20), "MiB", 1);
    // The cost of painting is measured elsewhere.
    desktop.display.close("Burnwick");
    runUntil([&] { return !desktop.display.shows("Burnwick"); }, "the window to close");
    home.append(); // the log was not among the session's before
    running.waitUntilIdle();
    watcher.listen();

    constexpr int lines = 20;
    double slowest = 0;
    const double processorBefore = running.processorSeconds();
    const std::uint64_t readBefore = running.readBytes();
    for (int i = 0; i < lines; ++i) {
        static_cast<void>(watcher.takeSignals());
        const double appended = running.secondsSinceStart();
        home.append();
        runUntil([&] { return !watcher.takeSignals().isEmpty(); }, "the title");
        slowest = std::max(slowest, running.secondsSinceStart() - appended);
        runFor(std::chrono::milliseconds(200));
    }
    table.addAtMost("a line among 1 GB until the title, slowest of 20", slowest, 1.5, "s", 2);
    table.addAtMost("processor time for it", (running.processorSeconds() - processorBefore) / lines * 1000, 5,
                    "ms", 1);
    table.addAtMost("bytes read for it", static_cast<double>(running.readBytes() - readBefore) / lines / 1024,
                    64, "KiB", 1);

    constexpr double burst = 10;
    static_cast<void>(watcher.takeSignals());
    const double burstProcessor = running.processorSeconds();
    const double began = running.secondsSinceStart();
    for (int i = 0; running.secondsSinceStart() - began < burst; ++i) {
        for (int line = 0; line < 10; ++line)
            home.append();
        const auto due = std::chrono::duration<double>(began + (i + 1) * 0.01 - running.secondsSinceStart());
        runFor(std::chrono::duration_cast<std::chrono::milliseconds>(due));
    }
    table.addAtMost("1,000 lines a second: processor time",
                    (running.processorSeconds() - burstProcessor) / burst * 100, 10, "% of a core", 1);
    const auto titles = watcher.takeSignals().count(QStringLiteral("NewTitle"));
    table.addAtMost("1,000 lines a second: titles", static_cast<double>(titles) / burst, 2.1, "a second", 1);
}

} // namespace burnwick::bench
