// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/BarForms.h"
#include "forms/JsonForm.h"
#include "forms/Sparkline.h"
#include "forms/TerminalText.h"
#include "report/FormsFixture.h"
#include "support/HostileTexts.h"
#include "support/JsonMembers.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <regex>
#include <vector>

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
using test::someFigures;
using test::someFiguresWithAccount;
using test::tableOf;
using test::withoutMarkup;

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();

TEST(TableForm, ShowsTheFiguresThatThereAre) {
    Snapshot expired = emptySnapshot();
    expired.account.oauthStatus = OAuthStatus::expired;
    const struct {
        Snapshot snapshot;
        std::vector<const char *> shown, absent;
    } rows[] = {
        {someFigures(),
         {"^Burnwick +204\\.3K \\| \\$0\\.30 \\| s--  ●\n", "Input +300 +Cost +\\$0\\.30\n",
          "Output +200\\.0K +Burn rate +225 tokens/min\n", "Cache creation +10 +Projected today +\\$2\\.92\n",
          "Cache read +4\\.0K +Projected week +\\$20\\.41\n",
          "Total tokens +204\\.3K +Projected month +\\$87\\.48\n",
          "History  last 30 days\n  Sessions +3 +Session Cost +\\$0\\.30\n",
          "Activity  tokens a day, last 7 days\n  ····█··\n",
          "claude-opus-4-5 +82% +(━)+ +1\\.1K in · 550 out\n"},
         {"Quota", "Claude status"}},
        {someFiguresWithAccount(),
         {"\nQuota  connected\n  Session +62%  (━){15} +resets in 2h 5m\n  Weekly +101%  (━){24} *\n",
          "\n  Claude Design +0%  ━ +resets now\n",
          "\n  Extra usage +20%  (━){5} +\\$10\\.00 · resets in 20 days\n",
          "\n  Monthly limit +\\$50\\.00 +Current balance +\\$40\\.00\n",
          "\nClaude status *\n  Claude Code +Degraded\n  API\uFFFD\uFFFD\\[2J\uFFFD +Unknown\n"},
         {"not known"}},
        {expired,
         {"no usage in the logs", "No model data yet", "Quota  expired\n  No quota could be had\n",
          "Claude status  not known\n"},
         {"Activity", "Extra usage"}},
    };
    for (const auto &row : rows) {
        const std::string table = tableOf(row.snapshot);
        expectMatches(table, row.shown);
        for (const char *text : row.absent)
            EXPECT_EQ(table.find(text), std::string::npos) << text;
    }
}

TEST(TableForm, ShowsHostileNamesAsText) {
    const Snapshot usual = someFiguresWithAccount();
    const std::size_t lines = linesOf(tableOf(usual)).size();
    for (const auto &hostile : test::hostileTexts()) {
        Snapshot figures = usual;
        figures.usage.historicalData.favoriteModel = hostile.text;
        figures.usage.historicalData.modelStats[1].name = hostile.text;
        figures.account.claudeStatus[0].name = hostile.text;
        const std::string table = tableOf(figures);
        EXPECT_EQ(linesOf(table).size(), lines) << hostile.what;
        for (const std::string &line : linesOf(table)) {
            EXPECT_FALSE(test::hasControls(line)) << hostile.what;
            EXPECT_LE(columnsOf(line), 80) << hostile.what;
        }
        EXPECT_NE(table.find(elidedInMiddle(hostile.shown, 35) + ' '), std::string::npos) << table;
    }
}

TEST(TableForm, FitsEightyColumnsWithTheLargestFiguresAndHasTheSameTextInColor) {
    Snapshot figures = someFiguresWithAccount();
    HistoricalData &history = figures.usage.historicalData;
    history.totalTokens = {most, 0, 0, 0};
    history.sessionCount = most;
    history.modelStats[0] = {"模型模型模型模型模型模型模型模型模型模型模型模型", most, most, 100};
    history.modelStats.resize(30, {"another", 1, 1, 0});
    history.dailyActivity[local_days(1950y / 1 / 1)] = most;
    figures.account.quotaData->fiveHourUsagePct = 1;
    figures.account.quotaData->sevenDayUsagePct = 1e300;
    figures.account.quotaData->sevenDayResetAt = Instant::max();
    figures.account.extraUsage = ExtraUsageData{1e300, 1e300, 1e300, 1e300, most};
    const std::string table = tableOf(figures);
    for (const std::string &line : linesOf(table))
        EXPECT_LE(columnsOf(line), 80) << line;
    EXPECT_NE(table.find("and 22 more\n"), std::string::npos) << table;

    const std::string colored = tableOf(figures, TerminalColors::full);
    EXPECT_EQ(std::regex_replace(colored, std::regex("\033\\[[0-9;]*m"), ""), table);
    EXPECT_NE(colored.find("\033[38;2;51;199;89m●"), std::string::npos);
}

TEST(SparklineTest, DrawsOneCharacterADay) {
    const LocalDay today = local_days(2026y / 3 / 2);
    const std::map<LocalDay, std::int64_t> activity{{today, 100},
                                                    {today - std::chrono::days(1), 1},
                                                    {today - std::chrono::days(2), 50},
                                                    {today - std::chrono::days(3), 0},
                                                    {today - std::chrono::days(9), 1000},
                                                    {today + std::chrono::days(1), 1000}};
    EXPECT_EQ(sparkline(activity, today, 5), "··▄▁█");
    EXPECT_EQ(sparkline(activity, today - std::chrono::days(3), 5), "");
    EXPECT_EQ(sparkline({}, today, 5), "");
}

TEST(BarForms, WrapTitleAndToolTipForWaybarAndGenmon) {
    Snapshot figures = someFigures();
    figures.account.quotaData.emplace().fiveHourUsagePct = 67.4;
    const std::string form = waybarForm(figures, now);
    EXPECT_EQ(form.find('\n'), form.size() - 1);
    const QJsonObject module = jsonObject(form);
    expectMembers(module, R"({"class":"orange","percentage":67})");
    const QString title = module[QStringLiteral("text")].toString();
    const QString toolTip = module[QStringLiteral("tooltip")].toString();
    EXPECT_EQ(withoutMarkup(title), "204.3K | $0.30 | s67%  ●");
    for (const char *part :
         {"<span weight=\"600\">204.3</span>K", "<span alpha=\"48%\"> | </span>",
          "<span weight=\"900\">67%</span>", "<span weight=\"900\" foreground=\"#fcbd2e\">●</span>"})
        EXPECT_TRUE(title.contains(QString::fromUtf8(part))) << part;
    expectMatches(withoutMarkup(toolTip),
                  {"300 in", "200.0K out", "10 cache creation · 4.0K cache read", "\\$0.30", "225 tokens/min",
                   "\\$2.92 today · \\$20.41 week · \\$87.48 month", "67% used \\(orange\\)"});
    EXPECT_EQ(genmonForm(figures, now),
              QStringLiteral("<txt>%1</txt>\n<tool>%2</tool>\n").arg(title, toolTip).toStdString());

    const QJsonObject unknown = jsonObject(waybarForm(emptySnapshot(), now));
    expectMembers(unknown, R"({"class":"green"})");
    EXPECT_FALSE(unknown.contains(QStringLiteral("percentage"))) << "0 would be a figure";
}

TEST(JsonForm, HasEveryFigureExactly) {
    const std::string json = jsonForm(someFiguresWithAccount(), "1.2.3", now);
    EXPECT_LT(json.find("\"version\":"), json.find("\"title\":")) << "the keys are sorted";
    const QJsonObject root = jsonObject(json);
    expectMembers(root, R"({
        "version": "1.2.3", "title": "204.3K | $0.30 | s62%  ●", "statusIndicator": "orange",
        "session": {"hasJSONLData": true, "input": 300, "output": 200000, "cacheCreation": 10,
            "cacheRead": 4000, "total": 204310, "burnRateTokensPerMin": 225, "projectedTodayCost": 2.916,
            "projectedWeeklyCost": 20.412, "projectedMonthlyCost": 87.48},
        "history": {
            "timeFilter": "30d", "sessionCount": 3, "messageCount": 0,
            "totalTokens": {"input": 9007199254740993, "output": 1, "cacheCreation": 2, "cacheRead": 3},
            "activeDays": 0, "currentStreak": 0, "longestStreak": 0, "peakHour": null,
            "favoriteModel": null, "dailyActivity": {"1970-02-09": 5, "1970-02-10": 0},
            "modelStats": [{"inputTokens": 1100, "outputTokens": 550, "percentage": 82.5},
                           {"name": "x\n\u001b[2J\u009b1m"}]
        },
        "quota": {
            "fiveHourUsagePct": 62.4, "sevenDayUsagePct": 100.6, "claudeDesignWeeklyPct": 0.2,
            "fiveHourResetAt": "1970-02-11T18:05:00.000Z", "sevenDayResetAt": null,
            "claudeDesignResetAt": "1970-02-11T15:00:00.000Z"
        },
        "extraUsage": {
            "dailySpend": 10, "monthlyLimit": 50.004, "currentBalance": 40, "dailySpendPct": 20,
            "daysUntilReset": 20
        },
        "limits": [], "oauthStatus": "connected",
        "claudeStatus": [{"name": "Claude Code", "status": "degraded"},
                         {"name": "API\n\u001b[2J\u009b", "status": "unknown"}]
    })");
    EXPECT_EQ(root[QStringLiteral("session")][QStringLiteral("cost")].toDouble(), 0.1 + 0.2);
}

TEST(JsonForm, EscapesHostileNames) {
    Snapshot figures = someFiguresWithAccount();
    for (const auto &hostile : test::hostileTexts()) {
        if (hostile.text.size() > 1'000)
            continue; // slow, and JSON has whole names
        figures.account.claudeStatus[0].name = hostile.text;
        const std::string json = jsonForm(figures, "1.2.3", now);
        for (const std::string &line : linesOf(json))
            EXPECT_FALSE(test::hasControls(line)) << hostile.what;
        const QJsonValue name = jsonObject(json)[QStringLiteral("claudeStatus")][0][QStringLiteral("name")];
        EXPECT_EQ(name.toString(), QString::fromStdString(hostile.text)) << hostile.what;
    }
}

} // namespace
} // namespace burnwick
