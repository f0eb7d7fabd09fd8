// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/BarForms.h"
#include "forms/BreakdownCsv.h"
#include "forms/BreakdownTable.h"
#include "forms/JsonForm.h"
#include "forms/TerminalText.h"
#include "report/FormsFixture.h"
#include "support/HostileTexts.h"
#include "support/JsonMembers.h"

#include <gtest/gtest.h>

#include <limits>
#include <regex>

namespace burnwick {
namespace {

using std::chrono::local_days;
using namespace std::chrono_literals;
using test::emptySnapshot;
using test::expectMatches;
using test::expectMembers;
using test::jsonObject;
using test::linesOf;
using test::now;
using test::tableOf;

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
const LocalDay firstDay = local_days(1970y / 2 / 10);

/// Two projects, models and days; the cheaper one of each comes first by name, and is without a price in part
/// or altogether. As logged they have other tokens.
Snapshot someUse(FigureChoice choice, const std::string &path = "/a", const std::string &model = "a") {
    Snapshot snapshot = emptySnapshot();
    UsageFigures &usage = snapshot.usage;
    usage.hasJSONLData = true;
    usage.figureChoice = choice;
    usage.exactSession = {{1, 2, 3, 4}, 0.5, 6, 7, 8, 9, 10};
    const bool isExact = choice == FigureChoice::exact;
    usage.sessionTokens = isExact ? usage.exactSession.tokens : SessionTokens{100, 200, 300, 400};
    usage.sessionCost = isExact ? usage.exactSession.cost : 11;
    UsageBreakdown breakdown;
    breakdown.history.messageCount = 5;
    breakdown.history.dailyActivity = {{firstDay, 40}, {firstDay + std::chrono::days(1), 2'000}};
    breakdown.total = {2'040, 40, 1e-6};
    breakdown.models = {{model, 10, 20, 3, 4, 3, 0, {40, 40, 0}},
                        {"opus", 1'000, 900, 30, 50, 20, 1, {2'000, 0, 1e-6}}};
    breakdown.projects = {{path, 1, {40, 30, 0}, 90, now - 24h, {}, {}},
                          {"/home/u/work", 2, {2'000, 0, 1e-6}, 5'000, std::nullopt, {}, {}}};
    breakdown.days = {{firstDay, {40, 40, 0}}, {firstDay + std::chrono::days(1), {2'000, 0, 1e-6}}};
    usage.historicalData = breakdown.history;
    if (!isExact) {
        usage.historicalData.dailyActivity = {{firstDay, 90}, {firstDay + std::chrono::days(1), 5'000}};
        usage.historicalData.modelStats = {{"opus", 2'500, 1'800, 98}, {model, 25, 50, 2}, {"echo", 7, 0, 0}};
    }
    usage.breakdown = std::make_shared<const UsageBreakdown>(breakdown);
    return snapshot;
}

std::vector<std::string> tablesOf(const UsageFigures &usage, TerminalColors colors = TerminalColors::none) {
    return {projectsTable(usage, "/home/u", colors), modelsTable(usage, colors), daysTable(usage, colors)};
}

TEST(BreakdownJson, HasTheExactFiguresWhateverTheChoice) {
    const char *exact = R"({
        "session": {"hasJSONLData": true, "input": 1, "output": 2, "cacheCreation": 3, "cacheRead": 4,
            "total": 10, "cost": 0.5, "burnRateTokensPerMin": 7, "projectedTodayCost": 8,
            "projectedWeeklyCost": 9, "projectedMonthlyCost": 10, "unpricedTokens": 6},
        "history": {"timeFilter": "All", "messageCount": 5,
            "dailyActivity": {"1970-02-10": 40, "1970-02-11": 2000}, "modelStats": []},
        "cost": 1e-6, "unpricedTokens": 40, "messages": 5,
        "models": [
            {"name": "a", "input": 10, "output": 20, "cacheWrite5m": 3, "cacheWrite1h": 4, "cacheRead": 3,
             "webSearches": 0, "cost": null},
            {"name": "opus", "cacheWrite1h": 50, "cacheRead": 20, "webSearches": 1, "cost": 1e-6}],
        "projects": [
            {"path": "/a", "sessions": 1, "tokens": 40, "cost": 0, "lastUsed": "1970-02-10T16:00:00.000Z"},
            {"path": "/home/u/work", "sessions": 2, "tokens": 2000, "cost": 1e-6, "lastUsed": null}],
        "days": {"1970-02-10": {"tokens": 40, "cost": null}, "1970-02-11": {"tokens": 2000, "cost": 1e-6}}
    })";
    for (const auto &[choice, shown] :
         {std::pair(FigureChoice::asLogged,
                    R"({"figures": "logged", "session": {"input": 100, "cost": 11}})"),
          std::pair(FigureChoice::exact, R"({"figures": "exact", "session": {"input": 1, "cost": 0.5}})")}) {
        const QJsonObject root = jsonObject(jsonForm(someUse(choice), "1.2.3", now));
        expectMembers(root[QStringLiteral("exact")], exact);
        expectMembers(root, shown);
    }
    Snapshot unpriced = someUse(FigureChoice::exact);
    unpriced.usage.exactSession.unpricedTokens = 10;
    expectMembers(jsonObject(jsonForm(unpriced, "1.2.3", now))[QStringLiteral("exact")],
                  R"({"session": {"cost": null, "projectedTodayCost": null, "projectedMonthlyCost": null}})");
}

TEST(BreakdownCsv, HasPlainFiguresOfTheChoice) {
    const UsageFigures logged = someUse(FigureChoice::asLogged).usage;
    const UsageFigures exact = someUse(FigureChoice::exact).usage;
    const std::pair<std::string, std::string> rows[] = {
        {projectsCsv(logged), "path,sessions,tokens,cost_usd,unpriced_tokens,last_used\r\n"
                              "\"/home/u/work\",2,5000,0.000001,0,\r\n"
                              "\"/a\",1,90,0,30,1970-02-10T16:00:00.000Z\r\n"},
        {projectsCsv(exact), "path,sessions,tokens,cost_usd,unpriced_tokens,last_used\r\n"
                             "\"/home/u/work\",2,2000,0.000001,0,\r\n"
                             "\"/a\",1,40,0,30,1970-02-10T16:00:00.000Z\r\n"},
        {modelsCsv(logged), "model,input_tokens,output_tokens,cache_write_5m_tokens,cache_write_1h_tokens,"
                            "cache_read_tokens,web_searches,cost_usd,unpriced_tokens\r\n"
                            "\"opus\",2500,1800,,,,,0.000001,0\r\n"
                            "\"a\",25,50,,,,,,40\r\n"
                            "\"echo\",7,0,,,,,,0\r\n"},
        {modelsCsv(exact), "model,input_tokens,output_tokens,cache_write_5m_tokens,cache_write_1h_tokens,"
                           "cache_read_tokens,web_searches,cost_usd,unpriced_tokens\r\n"
                           "\"opus\",1000,900,30,50,20,1,0.000001,0\r\n"
                           "\"a\",10,20,3,4,3,0,,40\r\n"},
        {daysCsv(logged), "day,tokens,cost_usd,unpriced_tokens\r\n"
                          "1970-02-10,90,,40\r\n1970-02-11,5000,0.000001,0\r\n"},
        {daysCsv(exact), "day,tokens,cost_usd,unpriced_tokens\r\n"
                         "1970-02-10,40,,40\r\n1970-02-11,2000,0.000001,0\r\n"},
    };
    for (const auto &[csv, expected] : rows)
        EXPECT_EQ(csv, expected);
}

TEST(BreakdownCsv, TextsAreNeitherFormulasNorControls) {
    const std::pair<std::string, std::string> rows[] = {
        {"", R"("")"},
        {R"(/a "b",c;d)", R"("/a ""b"",c;d")"},
        {"=cmd()", "\"'=cmd()\""},
        {"+1", R"("'+1")"},
        {"-1", R"("'-1")"},
        {"@x", R"("'@x")"},
        {"/=+-@'", R"("/=+-@'")"},
        {"\t=1\r\n\033[2J\x7f\u009b", "\"\uFFFD=1\uFFFD\uFFFD\uFFFD[2J\uFFFD\uFFFD\""},
        {"/\u0645\u06CC\u200C\u062E 👩\u200D🔧", "\"/\u0645\u06CC\u200C\u062E 👩\u200D🔧\""},
    };
    for (const auto &[text, cell] : rows) {
        const UsageFigures usage = someUse(FigureChoice::exact, text, text).usage;
        EXPECT_EQ(linesOf(projectsCsv(usage)).at(2), cell + ",1,40,0,30,1970-02-10T16:00:00.000Z\r");
        EXPECT_EQ(linesOf(modelsCsv(usage)).at(2), cell + ",10,20,3,4,3,0,,40\r");
    }
}

TEST(BreakdownTables, ShowFiguresOfTheChoiceAndMarkMissingPrices) {
    UsageFigures logged = someUse(FigureChoice::asLogged).usage;
    logged.timeFilter = TimeFilter::sevenDays;
    const UsageFigures exact = someUse(FigureChoice::exact, "", "").usage;
    const struct {
        const UsageFigures &usage;
        std::vector<const char *> projects, models, days;
    } rows[] = {
        {logged,
         {"^Projects  last 7 days · tokens as logged · costs at API prices\n",
          "\n  ~/work +\\$0\\.0000 +5\\.0K +2\n  /a +\\$0\\.00\\* +90 +1 +1970-02-10\n",
          "\n  Total: 2 projects +\\$0\\.0000\\* +5\\.1K\n  \\* 30 tokens with no price: counted"},
         {"\n  Model +Cost +Input +Output\n  opus +\\$0\\.0000 +2\\.5K +1\\.8K\n  a +no price +25 +50\n",
          "\n  Total: 3 models +\\$0\\.0000\\* +2\\.5K +1\\.9K\n"},
         {"\n  1970-02-10 +no price +90  ━\n  1970-02-11 +\\$0\\.0000 +5\\.0K  (━){24}\n",
          "\n  Total: 2 days +\\$0\\.0000\\* +5\\.1K\n"}},
        {exact,
         {"^Projects  all time · each message once · costs at API prices\n",
          "\n  ~/work +\\$0\\.0000 +2\\.0K +2\n  Unknown project +\\$0\\.00\\* +40 +1 "},
         {"\n  opus +\\$0\\.0000 +1\\.0K +900 +80 +20\n  Unknown model +no price +10 +20 +7 +3\n",
          "\n  Total: 2 models +\\$0\\.0000\\* +1\\.0K +920 +87 +23\n"},
         {"\n  1970-02-10 +no price +40  ━\n  1970-02-11 +\\$0\\.0000 +2\\.0K  (━){24}\n"}},
    };
    for (const auto &row : rows) {
        const auto tables = tablesOf(row.usage);
        expectMatches(tables[0], row.projects);
        expectMatches(tables[1], row.models);
        expectMatches(tables[2], row.days);
    }
    const auto empty = tablesOf(emptySnapshot().usage);
    expectMatches(empty[0], {"\n  No projects yet\n$"});
    expectMatches(empty[1], {"\n  No model data yet\n$"});
    expectMatches(empty[2], {"\n  No days yet\n$"});

    for (const auto &[path, shown] :
         {std::pair("/home/u", "\n  ~ "), std::pair("/home/user/x", "\n  /home/user/x ")})
        expectMatches(
            projectsTable(someUse(FigureChoice::exact, path).usage, "/home/u/", TerminalColors::none),
            {shown});
}

TEST(BreakdownTables, FitEightyColumnsWithHostileNamesAndTheLargestFigures) {
    for (const auto &hostile : test::hostileTexts()) {
        Snapshot snapshot = someUse(FigureChoice::exact, hostile.text, hostile.text);
        UsageBreakdown breakdown = *snapshot.usage.breakdown;
        breakdown.models = {{hostile.text, most, most, most, 0, most, most, {most, 1, 1e300}}};
        breakdown.projects = {{hostile.text, most, {most, 1, 1e300}, most, Instant::max(), {}, {}}};
        breakdown.days = {{firstDay, {most, 1, 1e300}}};
        snapshot.usage.historicalData.dailyActivity = {{firstDay, most}};
        snapshot.usage.breakdown = std::make_shared<const UsageBreakdown>(breakdown);
        const auto tables = tablesOf(snapshot.usage);
        const auto colored = tablesOf(snapshot.usage, TerminalColors::full);
        for (std::size_t i = 0; i < tables.size(); ++i) {
            const auto lines = linesOf(tables[i]);
            EXPECT_EQ(lines.size(), 5) << hostile.what << '\n' << tables[i];
            for (const std::string &line : lines) {
                EXPECT_FALSE(test::hasControls(line)) << hostile.what;
                EXPECT_LE(columnsOf(line), 80) << hostile.what << '\n' << line;
            }
            EXPECT_NE(colored[i], tables[i]);
            EXPECT_EQ(std::regex_replace(colored[i], std::regex("\033\\[[0-9;]*m"), ""), tables[i]);
        }
    }
}

TEST(SessionForms, NameTokensWithoutAPriceOfTheExactFiguresOnly) {
    Snapshot snapshot = someUse(FigureChoice::exact);
    expectMatches(tableOf(snapshot), {"\nSession .*each message once", "\n  6 tokens with no price: "});
    expectMatches(waybarForm(snapshot, now), {"Cost: \\$0\\.50 · 6 tokens with no price"});
    snapshot.usage.exactSession.unpricedTokens = 10;
    expectMatches(tableOf(snapshot), {"Cost +no price\n"});
    expectMatches(waybarForm(snapshot, now), {"Cost: no price · 10 tokens "});
    snapshot.usage.figureChoice = FigureChoice::asLogged;
    EXPECT_EQ(tableOf(snapshot).find("no price"), std::string::npos);
    EXPECT_EQ(waybarForm(snapshot, now).find("no price"), std::string::npos);
}

} // namespace
} // namespace burnwick
