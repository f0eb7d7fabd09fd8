// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "Random.h"
#include "ResultTable.h"

#include "ledger/Ledger.h"
#include "state/LimitCourses.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <random>
#include <utility>
#include <vector>

using namespace burnwick;
using namespace burnwick::bench;
using namespace std::chrono_literals;

namespace {

constexpr Instant firstDay(std::chrono::hours(24 * 20'000));

/// The session, the week, and three models: each at its pace in percent an hour of work.
struct Pace {
    Limit limit;
    double perHour;
};

double millisecondsOf(const std::function<void()> &work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

/// Records a year of eight hours of work a day, with an observation every five minutes; the percent is whole.
/// Returns the number of samples.
std::size_t recordYear(Ledger &ledger, Random &random) {
    std::vector<Pace> paces{{{Limit::Kind::session}, 14}, {{Limit::Kind::weekly}, 1.6}};
    for (const char *model : {"Opus", "Sonnet", "Claude Design"})
        paces.push_back({{Limit::Kind::weeklyScoped, model}, 1});
    std::vector<double> used(paces.size());
    std::vector<std::size_t> samples(paces.size());
    std::size_t count = 0;
    for (int day = 0; day < 365; ++day) {
        for (auto time = 9h + 0min; time < 17h; time += 5min) {
            const Instant now = firstDay + 24h * day + time;
            std::vector<Limit> limits;
            for (std::size_t i = 0; i < paces.size(); ++i) {
                Limit &limit = paces[i].limit;
                if (!limit.resetsAt || *limit.resetsAt <= now) {
                    limit.resetsAt = now + windowLengthOf(limit.kind);
                    used[i] = 0;
                    count += std::exchange(samples[i], 0);
                }
                used[i] += paces[i].perHour / 12 * static_cast<double>(random.below(1'000)) / 500;
                limit.usedPct = std::floor(std::min(used[i], 100.0));
                limit.observedAt = now;
                limits.push_back(limit);
            }
            const auto recorded = ledger.recordLimits(limits);
            for (std::size_t i = 0; recorded && i < paces.size(); ++i)
                samples[i] = (*recorded)[i].size();
        }
    }
    for (const std::size_t rest : samples)
        count += rest;
    return count;
}

/// Returns logs of a year, with a million lines, whose last files are of the last week.
LogHistory yearOfLogs(Instant now) {
    LogHistory history;
    constexpr int fileCount = 5'000;
    for (int file = 0; file < fileCount; ++file) {
        const Instant begin = now - 365 * 24h / fileCount * (fileCount - file);
        std::vector<JSONLEntry> entries;
        for (int line = 0; line < 200; ++line)
            entries.emplace_back(InternedString("assistant"), begin + 20s * line,
                                 InternedString(line % 3 == 0 ? "claude-opus-4-1" : "claude-sonnet-4-5"),
                                 SessionTokens{10, 500, 2'000, 80'000});
        LogFile log;
        log.status.regular = true;
        log.status.modified = begin + 20s * 200;
        history.files.push_back(log);
        history.entries.push_back(std::make_shared<const EntryList>(std::move(entries)));
    }
    return history;
}

} // namespace

int main() {
    ResultTable table;
    const std::filesystem::path folder = std::filesystem::temp_directory_path() /
                                         ("burnwick-bench-limits-" + std::to_string(std::random_device()()));
    const auto file = folder / "ledger.sqlite";
    static_cast<void>(Ledger(folder).recordLimits({}));
    const auto empty = std::filesystem::file_size(file);
    Random random(1);
    std::size_t count = 0;
    const double time = millisecondsOf([&] {
        Ledger ledger(folder);
        count = recordYear(ledger, random);
    });
    const auto size = static_cast<double>(std::filesystem::file_size(file) - empty);
    table.addFigure("limits: samples of a year", static_cast<double>(count), "", 0);
    table.addAtMost("limits: size of a sample", size / static_cast<double>(count), 20, "bytes", 1);
    table.addFigure("limits: recording five", time / (365 * 96), "ms", 3);

    const Instant end = firstDay + 365 * 24h;
    std::vector<double> times;
    for (int i = 0; i < 100; ++i) {
        const std::vector<Limit> limits{{Limit::Kind::session, "", i * 0.5, end + 5h, end + 1min * i},
                                        {Limit::Kind::weekly, "", i * 0.1, end + 100h, end + 1min * i}};
        times.push_back(
            millisecondsOf([&] { static_cast<void>(Ledger(folder, Patience::brief).recordLimits(limits)); }));
    }
    std::ranges::sort(times);
    table.addAtMost("limits: opening and recording, 95 % of times", times[95], 10, "ms", 2);
    std::filesystem::remove_all(folder);

    LogHistory history = yearOfLogs(end);
    std::vector<LimitCourse> courses =
        coursesOf(std::vector<Limit>{{Limit::Kind::session, "", 5, end + 1h, end},
                                     {Limit::Kind::weekly, "", 5, end + 1h, end},
                                     {Limit::Kind::weeklyScoped, "Opus", 5, end + 1h, end}},
                  std::nullopt, {});
    std::shared_ptr<const RecentUse> use;
    const double first = millisecondsOf([&] { use = addTokens(courses, history, nullptr); });
    history.entries.back() = std::make_shared<const EntryList>(*history.entries.back());
    const double update = millisecondsOf([&] { use = addTokens(courses, history, use.get()); });
    table.addFigure("limits: tokens of a million lines", first, "ms", 2);
    table.addAtMost("limits: the same after a change", update, 5, "ms", 2);
    return table.anyMissed() ? EXIT_FAILURE : EXIT_SUCCESS;
}
