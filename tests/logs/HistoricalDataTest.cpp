// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/HistoryBuilder.h"

#include "display/StatFigures.h"
#include "logs/HistorySums.h"
#include "logs/JSONLParser.h"
#include "model/Timestamp.h"
#include "support/LogTreeFixture.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using std::chrono::local_days;
using test::at;

struct Row {
    std::string timestamp;
    std::int64_t input = 0;
    std::int64_t output = 0;
    const char *model = "claude-sonnet-4-5";
    const char *session = "s";
};

JSONLEntry entryOf(const Row &row) {
    JSONLEntry entry(InternedString("assistant"), parseLogInstant(row.timestamp),
                     row.model != nullptr ? InternedString(row.model) : InternedString(),
                     SessionTokens{row.input, row.output, 1, 0});
    entry.setSessionId(InternedString(row.session));
    return entry;
}

HistoricalData historyOf(std::initializer_list<Row> rows, const char *zone = "UTC",
                         LocalDay today = local_days(2025y / 6 / 10)) {
    HistoryBuilder builder(Calendar::inZone(zone));
    for (const Row &row : rows)
        builder.add(entryOf(row));
    return builder.finish(7, today);
}

TEST(HistoricalData, UndatedEntriesCountInSumsAndModelsOnly) {
    const HistoricalData history = historyOf({
        {"2025-06-10T12:00:00Z", 10, 1, "undated"}, // no fraction
        {"", 10, 1, "undated"},
        {"2025-06-10T12:00:00.5Z", 2, 1, "dated"},
        {"2025-06-09T12:00:00.5Z", 0, 0, nullptr},
    });
    EXPECT_EQ(history.messageCount, 4);
    EXPECT_EQ(history.totalTokens, (SessionTokens{22, 3, 4, 0}));
    EXPECT_EQ(history.activeDays, 2);
    EXPECT_EQ(history.favoriteModel, "dated");
    const std::map<LocalDay, std::int64_t> days{{local_days(2025y / 6 / 9), 1},
                                                {local_days(2025y / 6 / 10), 4}};
    EXPECT_EQ(history.dailyActivity, days);
    const std::vector<ModelStat> models{{"undated", 20, 2, 22.0 / 25 * 100}, {"dated", 2, 1, 3.0 / 25 * 100}};
    EXPECT_EQ(history.modelStats, models);
}

TEST(HistoricalData, StreaksCountConsecutiveDays) {
    const struct {
        const char *what;
        std::initializer_list<int> days;
        std::int64_t current, longest;
    } rows[] = {
        {"none", {}, 0, 0},
        {"today only", {10}, 1, 1},
        {"yesterday and the two before", {7, 8, 9}, 3, 3},
        {"the day before yesterday", {8}, 0, 1},
        {"today and yesterday", {9, 10}, 2, 2},
        {"a gap", {1, 2, 3, 5, 6}, 0, 3},
        {"not in order", {6, 2, 5, 1, 3}, 0, 3},
        {"a day in the future", {9, 10, 11, 12}, 2, 4},
    };
    for (const auto &row : rows) {
        HistoryBuilder builder(Calendar::inZone("UTC"));
        for (const int day : row.days)
            builder.add(entryOf({"2025-06-" + std::to_string(100 + day).substr(1) + "T10:00:00.0Z"}));
        const HistoricalData history = builder.finish(0, local_days(2025y / 6 / 10));
        EXPECT_EQ(history.currentStreak, row.current) << row.what;
        EXPECT_EQ(history.longestStreak, row.longest) << row.what;
    }
}

TEST(HistoricalData, DaysOnWhichClocksChangeCountOnce) {
    const struct {
        const char *zone;
        std::initializer_list<Row> rows;
        LocalDay today;
    } cases[] = {
        // 23 hours on the 30th, 25 on October 26; each entry on its own local day though not in UTC.
        {"Europe/Berlin",
         {{"2025-03-28T23:30:00.0Z"}, {"2025-03-29T23:30:00.0Z"}, {"2025-03-30T22:30:00.0Z"}},
         local_days(2025y / 3 / 31)},
        {"Europe/Berlin",
         {{"2025-10-24T22:30:00.0Z"}, {"2025-10-25T22:30:00.0Z"}, {"2025-10-26T23:30:00.0Z"}},
         local_days(2025y / 10 / 27)},
        // April 25 begins at 01:00.
        {"Africa/Cairo",
         {{"2025-04-24T21:59:59.9Z"}, {"2025-04-24T22:00:00.0Z"}, {"2025-04-25T21:30:00.0Z"}},
         local_days(2025y / 4 / 26)},
    };
    for (const auto &c : cases) {
        const HistoricalData history = historyOf(c.rows, c.zone, c.today);
        EXPECT_EQ(history.activeDays, 3) << c.zone;
        EXPECT_EQ(history.currentStreak, 3) << c.zone;
        EXPECT_EQ(history.longestStreak, 3) << c.zone;
    }
}

TEST(HistoricalData, PeakHourIsLocalAndOfEqualsTheEarliest) {
    const Row at9{"2025-06-01T09:50:00.0Z"};
    const Row at14{"2025-06-01T14:00:00.0Z"};
    EXPECT_EQ(historyOf({}).peakHour, std::nullopt);
    EXPECT_EQ(historyOf({at9, at14, at14}).peakHour, 14);
    EXPECT_EQ(historyOf({at14, at9}).peakHour, 9);
    EXPECT_EQ(historyOf({at14}, "Asia/Kathmandu").peakHour, 19);
}

TEST(HistoricalData, FavoriteModelHasTheMostMessagesAndOfEqualsTheSmallerName) {
    constexpr auto noon = "2025-06-01T12:00:00.0Z";
    EXPECT_EQ(historyOf({{noon, 900, 0, "big"}, {noon, 1, 0, "often"}, {noon, 1, 0, "often"}}).favoriteModel,
              "often");
    EXPECT_EQ(historyOf({{noon, 1, 0, "b"}, {noon, 1, 0, "a"}, {noon, 1, 0, "c"}}).favoriteModel, "a");
    EXPECT_EQ(historyOf({{noon, 1, 0, nullptr}}).favoriteModel, std::nullopt);
}

TEST(HistoricalData, ModelsAreSortedByShareThenByName) {
    constexpr auto noon = "2025-06-01T12:00:00.0Z";
    using Stats = std::vector<ModelStat>;
    EXPECT_EQ(
        historyOf({{noon, 1, 0, "b"}, {noon, 1, 0, "c"}, {noon, 2, 0, "x"}, {noon, 0, 1, "a"}}).modelStats,
        (Stats{{"x", 2, 0, 40}, {"a", 0, 1, 20}, {"b", 1, 0, 20}, {"c", 1, 0, 20}}));
    EXPECT_EQ(historyOf({{noon, 0, 0, "b"}, {noon, 0, 0, "a"}}).modelStats,
              (Stats{{"a", 0, 0, 0}, {"b", 0, 0, 0}}));
}

TEST(HistoricalData, FiltersKeepEntriesDatedWithinThePeriod) {
    LogHistory log; // of one file for each row
    log.files.resize(9);
    std::vector<JSONLEntry> all;
    for (const Row &row : std::initializer_list<Row>{
             {"2025-06-03T11:59:59.999Z", 1, 0, "m", "old"},
             {"2025-06-03T12:00:00.000Z", 2, 0, "m", "a"},
             {"2025-06-09T12:00:00.000Z", 4, 0, "m", "b"},
             {"2025-06-09T12:00:00.000Z", 8, 0, "m", "a"},
             {"2025-06-09T12:00:00Z", 16, 0, "m", "undated"},
             {"2025-05-11T12:00:00.000Z", 64, 0, "m", "month"},
             {"2025-05-11T11:59:59.999Z", 128, 0, "m", "older"},
         }) {
        all.push_back(entryOf(row));
        log.entries.push_back(std::make_shared<const EntryList>(1, all.back()));
    }
    LogHistory together = log; // all rows in one file
    together.entries = {nullptr, std::make_shared<const EntryList>(all)};

    const struct {
        TimeFilter filter;
        std::int64_t sessions, input;
    } rows[] = {{TimeFilter::all, 9, 223}, {TimeFilter::sevenDays, 2, 14}, {TimeFilter::thirtyDays, 4, 79}};
    for (const auto &row : rows) {
        for (const LogHistory &files : {log, together}) {
            const HistoricalData history = JSONLParser::computeHistoricalData(
                files, row.filter, Calendar::inZone("UTC"), at("2025-06-10T12:00:00Z"));
            EXPECT_EQ(history.sessionCount, row.sessions) << nameOf(row.filter);
            EXPECT_EQ(history.totalTokens.input, row.input) << nameOf(row.filter);
        }
    }
}

TEST(HistorySums, TakeOverTheSumsOfUnchangedFilesOnlyInTheSameCalendar) {
    const auto list = [](const char *time, std::int64_t input) {
        return std::make_shared<const EntryList>(1, entryOf({time, input, 0, "m", "s"}));
    };
    LogHistory log;
    log.files.resize(2);
    log.entries = {list("2025-06-09T23:30:00.0Z", 1), list("2025-06-09T12:00:00.0Z", 2)};
    const HistorySums first(log, Calendar::inZone("UTC"));
    log.entries[1] = list("2025-06-09T13:00:00.0Z", 4);
    const Calendar calendars[] = {Calendar::inZone("UTC"), Calendar::inZone("Asia/Tokyo")};
    for (const Calendar &calendar : calendars) {
        const Instant now = at("2025-06-10T12:00:00Z");
        EXPECT_EQ(HistorySums(log, calendar, &first).within(TimeFilter::all, now),
                  HistorySums(log, calendar).within(TimeFilter::all, now));
    }
    EXPECT_EQ(
        HistorySums(log, calendars[1], &first).within(TimeFilter::all, at("2025-06-10T12:00:00Z")).activeDays,
        2);
}

TEST(StatFigures, HaveLabelsAndFormattedValuesInOrder) {
    HistoricalData history;
    history.sessionCount = 1234;
    history.messageCount = 56789;
    history.totalTokens = {1'500, 999'999, 100'000, 8'898'501};
    history.activeDays = 40;
    history.currentStreak = 4;
    history.longestStreak = 17;
    history.peakHour = 13;
    history.favoriteModel = "claude-opus-4-5-20251101";
    const std::array<StatFigure, 12> expected{{{"Sessions", "1234"},
                                               {"Messages", "56789"},
                                               {"Total tokens", "10.0M"},
                                               {"Active days", "40"},
                                               {"Cache Effective", "89%"},
                                               {"Input", "1.5K"},
                                               {"Session Cost", "$0.0042"},
                                               {"Current streak", "4d"},
                                               {"Longest streak", "17d"},
                                               {"Peak hour", "1 PM"},
                                               {"Favorite model", "Opus"},
                                               {"Output", "1000.0K"}}};
    EXPECT_EQ(statFigures(history, 0.0042), expected);
}

TEST(StatFigures, AreZeroOrDashesForAnEmptyHistory) {
    const char *values[] = {"0", "0", "0", "0", "0%", "0", "$0.00", "0d", "0d", "--", "--", "0"};
    const auto figures = statFigures({}, 0);
    for (std::size_t i = 0; i < figures.size(); ++i)
        EXPECT_EQ(figures[i].value, values[i]) << figures[i].label;
}

} // namespace
} // namespace burnwick
