// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/LedgerFixture.h"
#include "logs/LogFileReader.h"
#include "support/LogCapture.h"
#include "support/ManualClock.h"

#include <algorithm>
#include <limits>
#include <thread>

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Kind = Limit::Kind;
using Samples = std::vector<LimitSample>;

const Instant noon = test::at("2025-06-10T12:00:00Z");

/// Of the session's limit.
struct Observation {
    double minute, percent;
    std::optional<std::chrono::nanoseconds> resets = 4h; ///< after noon

    operator Limit() const { // NOLINT: for the tables
        const std::chrono::nanoseconds time(std::llround(minute * 60e9));
        return {Kind::session, "",
                percent,       resets ? std::optional(noon + *resets) : std::nullopt,
                noon + time,   Limit::Source::endpoint};
    }
};

std::string textOf(const Samples &samples) {
    std::ostringstream text;
    for (const LimitSample &sample : samples)
        text << std::chrono::duration<double, std::ratio<60>>(sample.at - noon).count() << ":"
             << sample.percent << " ";
    return text.str();
}

/// Returns what a new program's ledger returns after it recorded the limit.
Samples recorded(const fs::path &folder, const Limit &limit, Patience patience = Patience::usual) {
    const auto samples = Ledger(folder, patience).recordLimits(std::span(&limit, 1));
    return samples ? samples->at(0) : Samples();
}

struct Course {
    const char *name;
    std::vector<Observation> observations;
    const char *samples;        ///< at the last one, "minute:percent"
    double lastPercent = 0;     ///< of lastLimits(); 0 for no limit
    int lastMinute = 0;         ///< of lastLimits()
    Instant now = noon + 59min; ///< when that is called
};

std::ostream &operator<<(std::ostream &out, const Course &course) {
    return out << course.name;
}

const double huge = std::numeric_limits<double>::max();

const std::vector<Course> courses{
    {"changes", {{0, 1}, {5, 2.5}, {10, 2.51}}, "0:1 5:2.5 10:2.51 ", 2.51, 10},
    {"the same percent for a while", {{0, 1}, {5, 1}, {10, 1}, {16, 1}, {20, 1}}, "0:1 16:1 20:1 ", 1, 20},
    {"a change after the same percent", {{0, 1}, {10, 1}, {14, 2}}, "0:1 14:2 ", 2, 14},
    {"the same percent within a minute", {{0, 1}, {1 / 3., 1}, {0.75, 1}}, "0:1 0.75:1 ", 1, 0},
    {"one observation twice", {{0.025, 1}, {0.025, 1}}, "0.025:1 ", 1, 0},
    {"a second with two percents", {{1, 1}, {1 + 0.4 / 60, 2}, {2, 3}}, "1:2 2:3 ", 3, 2},
    {"a fall", {{0, 60}, {5, 3}, {10, 61}}, "0:60 5:3 10:61 ", 61, 10},
    {"reset instants that vary", {{0, 1}, {5, 2, 4h + 50s}, {10, 3, 4h - 50s}}, "0:1 5:2 10:3 ", 3, 10},
    {"another window", {{0, 90}, {5, 2, 4h + 2min}}, "5:2 ", 2, 5},
    {"another window that resets earlier", {{0, 90}, {5, 2, 3h}}, "5:2 ", 2, 5},
    {"samples that a varying reset puts before the window",
     {{-60 + 1 / 60., 1}, {5, 2, 4h + 30s}},
     "5:2 ",
     2,
     5},
    {"a clock that was set back", {{0, 1}, {50, 2}, {20, 3}}, "0:1 20:3 ", 2, 50},
    {"the time after that", {{0, 1}, {50, 2}, {20, 3}, {55, 4}}, "0:1 20:3 50:2 55:4 ", 4, 55},
    {"a clock that is still set back", {{50, 2}, {20, 3}}, "20:3 ", 3, 20, noon + 30min},
    {"a reset that is over", {{0, 1}, {5, 2}}, "0:1 5:2 ", 0, 0, noon + 4h},
    {"no reset instant", {{0, 5, {}}, {0, 5, {}}}, "0:5 "},
    {"a reset in the past", {{0, 1, -1h}, {5, 1, -1h}}, "5:1 "},
    {"a reset in ten years", {{0, 1, 87'600h}, {5, 1, 87'600h}}, "5:1 "},
    {"no number", {{0, std::nan("")}, {5, -1}}, "5:-1 "},
    {"numbers that are too large", {{0, 1e9}, {1, huge}, {2, 0}}, "0:1e+09 1:1e+10 2:0 ", 0, 2},
};

class LimitCourses : public testing::TestWithParam<Course> {
protected:
    const test::LogHome m_home;
    const fs::path m_folder = m_home.path() / "data";
};

TEST_P(LimitCourses, SamplesAreThoseOfTheWindowUpToTheLastObservation) {
    const Course &course = GetParam();
    const test::LogCapture log;
    Ledger ledger(m_folder);
    Samples last;
    for (const Limit limit : course.observations)
        last = ledger.recordLimits(std::span(&limit, 1)).value().at(0);
    EXPECT_EQ(textOf(last), course.samples);
    EXPECT_EQ(textOf(recorded(m_folder, course.observations.back())), course.samples) << "in a new program";
    const auto limits = Ledger(m_folder).lastLimits(course.now);
    ASSERT_EQ(limits.size(), course.lastPercent > 0 || course.lastMinute > 0 ? 1U : 0U);
    for (const Limit &limit : limits) {
        EXPECT_EQ(limit.usedPct, course.lastPercent);
        EXPECT_EQ(std::chrono::floor<std::chrono::minutes>(limit.observedAt - noon).count(),
                  course.lastMinute);
        EXPECT_TRUE(limit.resetsAt == Limit(course.observations.front()).resetsAt ||
                    course.observations.size() == 2);
    }
    EXPECT_TRUE(log.lines().isEmpty()) << log.lines().join(u'\n').toStdString();
}

INSTANTIATE_TEST_SUITE_P(Each, LimitCourses, testing::ValuesIn(courses));

TEST(LedgerLimits, EachOfTheFirst32LimitsHasItsOwnSamplesWhateverItsName) {
    const test::LogHome home;
    Ledger ledger(home.path());
    const std::string names[] = {"", "Opus", std::string("\0\xFF'\n", 4), std::string(256, 'n'),
                                 std::string(257, 'n')};
    std::vector<Limit> limits{Observation{0, 1}};
    for (const std::string &name : names)
        limits.push_back({Kind::weeklyScoped, name, 2, noon + 96h, noon, Limit::Source::statusLine});
    while (limits.size() < 40)
        limits.push_back({Kind::weeklyScoped, std::to_string(limits.size()), 3, noon + 4h, noon});
    for (const auto step : {0min, 5min}) {
        for (Limit &limit : limits) {
            limit.observedAt += step;
            limit.usedPct += static_cast<double>(step.count());
        }
        const auto samples = ledger.recordLimits(limits).value();
        ASSERT_EQ(samples.size(), limits.size());
        for (std::size_t i = 0; i < limits.size(); ++i) {
            EXPECT_EQ(samples[i].size(), step > 0min && i != 5 && i < 32 ? 2U : 1U) << i;
            EXPECT_EQ(samples[i].back(), (LimitSample{limits[i].observedAt, limits[i].usedPct})) << i;
        }
    }
    limits.erase(limits.begin() + 32, limits.end());
    limits.erase(limits.begin() + 5);
    std::ranges::sort(limits, {}, [](const Limit &limit) { return std::tie(limit.kind, limit.model); });
    EXPECT_EQ(Ledger(home.path()).lastLimits(noon + 1h), limits);
    EXPECT_EQ(Ledger(home.path() / "none").lastLimits(noon), std::vector<Limit>());
    EXPECT_FALSE(fs::exists(home.path() / "none"));
}

TEST(LedgerLimits, InstantsAtBothEndsOfTheRangeAreHarmless) {
    const test::LogHome home;
    Ledger ledger(home.path());
    for (const Instant end : {Instant::min(), Instant::max()}) {
        for (const auto distance : {0h, 3h, 200h}) {
            const Instant other = end == Instant::min() ? end + distance : end - distance;
            for (const auto &[observed, resets] : {std::pair(end, other), std::pair(other, end)}) {
                const Limit limit{Kind::weekly, "", 7, resets, observed};
                EXPECT_EQ(ledger.recordLimits({&limit, 1}).value().at(0).back().at, observed);
            }
            EXPECT_LE(ledger.lastLimits(other).size(), 1U);
        }
    }
    EXPECT_EQ(ledger.lastLimits(Instant::max()).size(), 0U);
}

TEST(LedgerLimits, AWindowHasAnyNumberOfSamplesWhateverItsResetVaries) {
    const test::LogHome home;
    Ledger ledger(home.path());
    Samples samples;
    for (int i = 0; i < 200; ++i) {
        const Limit limit = Observation{1.0 * i, 1.0 * (i % 100), i % 3 == 0 ? 4h : 4h + 40s};
        samples = ledger.recordLimits({&limit, 1}).value().at(0);
    }
    ASSERT_EQ(samples.size(), 200U);
    for (int i = 0; i < 200; ++i)
        EXPECT_EQ(samples.at(static_cast<std::size_t>(i)),
                  (LimitSample{noon + std::chrono::minutes(i), i % 100 * 1.0}));
    SQLite::Database database((home.path() / "ledger.sqlite").string());
    EXPECT_EQ(database.execAndGet("SELECT count(*) FROM limitPart").getInt(), 4)
        << "rows are too large or too small";
}

TEST(LedgerLimits, ProgramsThatRecordAtOnceLoseAndRepeatNothing) {
    const test::LogHome home;
    static_cast<void>(recorded(home.path(), Observation{-120, 1, 3h}));
    constexpr int each = 150;
    std::vector<std::thread> programs;
    for (int program = 0; program < 3; ++program) {
        programs.emplace_back([&home, program] {
            Ledger ledger(home.path());
            for (int i = 0; i < each;) {
                const Limit limit = Observation{(3 * i + program) / 60., i + 0.1 * program};
                i += ledger.recordLimits({&limit, 1}) ? 1 : 0; // others may write for too long
            }
        });
    }
    for (std::thread &program : programs)
        program.join();
    const Samples samples = recorded(home.path(), Observation{60, 99});
    ASSERT_EQ(samples.size(), 3U * each + 1);
    EXPECT_TRUE(std::ranges::is_sorted(samples, {}, &LimitSample::at));
    for (std::size_t i = 0; i < 3U * each; ++i) // NOLINT: of small numbers
        EXPECT_DOUBLE_EQ(samples[i].percent, static_cast<double>(i / 3) + 0.1 * static_cast<double>(i % 3));
}

TEST_F(LedgerTest, LimitsBetweenReadingsOfLogsDisturbNeither) {
    addLog(2);
    waitUntilSettled();
    const auto file = m_home.projects() / "b" / "2.jsonl";
    Ledger ledger(m_folder);
    Ledger other(m_folder);
    LogHistory history;
    history.files = allLogFiles({m_home.projects()});
    history.entries.resize(history.files.size());
    history.positions.resize(history.files.size());
    ledger.setKeepsHistory(true);
    ledger.recall(history);
    EXPECT_TRUE(ledger.keep(file, nullptr, *LogFileReader(LineSelection::usageOnly).readFile(file)));
    for (Ledger *program : {&ledger, &other}) {
        const Limit limit = program == &ledger ? Observation{0, 1} : Observation{5, 2};
        EXPECT_TRUE(program->recordLimits({&limit, 1}));
    }
    EXPECT_TRUE(ledger.finish(&history)) << "another program's samples count as lines";
    EXPECT_EQ(recalled(), logs());
}

TEST_F(LedgerTest, BriefPatienceRepairsNothingAndDoesNotWaitLong) {
    const struct {
        const char *name;
        void (*prepare)(LedgerTest &);
        const char *line; ///< what the only line in the log contains; null without a line
    } rows[] = {
        {"new", [](LedgerTest &t) { fs::remove_all(t.m_folder); }, nullptr},
        {"known", [](LedgerTest &) {}, nullptr},
        {"no file but a backup",
         [](LedgerTest &t) { fs::rename(t.m_file, t.m_folder / "ledger.backup.sqlite"); }, "must restore"},
        {"damaged", [](LedgerTest &t) { test::writeFile(t.m_file, std::string(5'000, 'x')); },
         "not used now: file is"},
        {"locked", [](LedgerTest &) {}, "not used now: database is locked"},
    };
    const auto intact = contents();
    for (const auto &[name, prepare, line] : rows) {
        SCOPED_TRACE(name);
        restore(intact);
        prepare(*this);
        const bool isLocked = std::string_view(name) == "locked";
        std::optional<SQLite::Database> writer;
        if (isLocked)
            writer.emplace(m_file.string(), SQLite::OPEN_READWRITE).exec("BEGIN IMMEDIATE");
        const auto before = line != nullptr ? contents() : intact;
        const test::LogCapture log;
        Ledger ledger(m_folder, Patience::brief);
        const auto begin = std::chrono::steady_clock::now();
        for (const double percent : {1.0, 2.0}) {
            const Limit limit = Observation{0, percent};
            EXPECT_EQ(ledger.recordLimits({&limit, 1}).has_value(), line == nullptr);
        }
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 150ms);
        EXPECT_EQ(log.lines().size(), line != nullptr ? 1 : 0) << log.lines().join(u'\n').toStdString();
        if (line != nullptr) {
            EXPECT_TRUE(log.lines().join(u'\n').contains(QLatin1String(line)));
            EXPECT_EQ(contents(), before);
        } else {
            EXPECT_EQ(textOf(recorded(m_folder, Observation{1, 3}, Patience::brief)), "0:2 1:3 ");
        }
    }
}

} // namespace
} // namespace burnwick
