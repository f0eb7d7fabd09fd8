// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/GenmonForm.h"
#include "report/JsonForm.h"
#include "report/Sparkline.h"
#include "report/TableForm.h"
#include "report/TerminalText.h"
#include "report/WaybarForm.h"
#include "support/HostileTexts.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QXmlStreamReader>

#include <gtest/gtest.h>

#include <limits>
#include <regex>
#include <sstream>

namespace burnwick {
namespace {

using std::chrono::local_days;
using namespace std::chrono_literals;

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();

ReportFigures someFigures() {
    ReportFigures figures;
    figures.session.hasJSONLData = true;
    figures.session.tokens = {300, 200'000, 10, 4'000};
    figures.session.cost = 0.1 + 0.2; // has no short decimal
    figures.session.burnRateTokensPerMin = 225;
    figures.session.projected = {2.916, 20.412, 87.48};
    figures.timeFilter = TimeFilter::thirtyDays;
    figures.today = local_days(2026y / 2 / 1);
    figures.history.sessionCount = 3;
    figures.history.totalTokens = {9'007'199'254'740'993, 1, 2, 3}; // more than a double counts exactly
    figures.history.dailyActivity = {{local_days(2026y / 1 / 30), 5}, {local_days(2026y / 1 / 31), 0}};
    figures.history.modelStats = {{"claude-opus-4-5", 1100, 550, 82.5}, {"x\n\033[2J\u009b1m", 350, 0, 17.5}};
    return figures;
}

QuotaData quotaAt(double pct) {
    QuotaData quota;
    quota.fiveHourUsagePct = pct;
    return quota;
}

ReportFigures someFiguresWithAccount() {
    ReportFigures figures = someFigures();
    figures.now = Instant(1'000h);
    figures.session.quota = QuotaData{62.4, 100.6, 0.2, Instant(1'002h + 5min), {}, Instant(999h)};
    figures.account = AccountFigures{OAuthStatus::connected,
                                     ExtraUsageData{10, 50.004, 40, 20, 20},
                                     {{{"Claude Code", ClaudeComponentStatus::Status::degraded},
                                       {"API\n\033[2J\u009b", ClaudeComponentStatus::Status::unknown}}}};
    return figures;
}

std::vector<std::string> linesOf(const std::string &text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

QJsonObject parsed(const std::string &json) {
    QJsonParseError error;
    const auto document = QJsonDocument::fromJson(QByteArray::fromStdString(json), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << json;
    return document.object();
}

/// The text that the markup shows; fails the test when it is not well-formed.
std::string withoutMarkup(const QString &markup) {
    QXmlStreamReader reader(QStringLiteral("<all>") + markup + QStringLiteral("</all>"));
    QString text;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::Characters)
            text += reader.text();
    }
    EXPECT_FALSE(reader.hasError()) << markup.toStdString();
    return text.toStdString();
}

TEST(TableForm, ShowsTheFigures) {
    const std::string table = tableForm(someFigures(), TerminalColors::none);
    const char *patterns[] = {
        "^Burnwick +204\\.3K \\| \\$0\\.30 \\| s--  ●\n",
        "Input +300 +Cost +\\$0\\.30\n",
        "Output +200\\.0K +Burn rate +225 tokens/min\n",
        "Cache creation +10 +Projected today +\\$2\\.92\n",
        "Cache read +4\\.0K +Projected week +\\$20\\.41\n",
        "Total tokens +204\\.3K +Projected month +\\$87\\.48\n",
        "History  last 30 days\n  Sessions +3 +Session Cost +\\$0\\.30\n",
        "claude-opus-4-5 +82% +(━)+ +1\\.1K in · 550 out\n",
    };
    for (const char *pattern : patterns)
        EXPECT_TRUE(std::regex_search(table, std::regex(pattern))) << pattern << '\n' << table;
}

TEST(TableForm, StaysPlainAndWithinEightyColumnsWhateverTheNames) {
    ReportFigures figures = someFigures();
    std::string longName;
    for (int i = 0; i < 100; ++i)
        longName += "模型\033[31m";
    figures.history.favoriteModel = longName;
    figures.history.totalTokens = {most, 0, 0, 0};
    figures.history.sessionCount = most;
    figures.history.modelStats[0] = {longName, most, most, 100};
    figures.history.modelStats.resize(30, {"another", 1, 1, 0});
    figures.history.dailyActivity[local_days(1999y / 1 / 1)] = most;
    const std::string table = tableForm(figures, TerminalColors::none);
    for (const std::string &line : linesOf(table)) {
        EXPECT_LE(columnsOf(line), 80) << line;
        EXPECT_EQ(printableText(line), line);
    }
    EXPECT_NE(table.find("and 22 more\n"), std::string::npos) << table;
}

TEST(TableForm, ShowsHostileNamesAsText) {
    for (const auto &hostile : test::hostileTexts()) {
        ReportFigures figures = someFiguresWithAccount();
        const std::size_t lines = linesOf(tableForm(figures, TerminalColors::none)).size();
        figures.history.favoriteModel = hostile.text;
        figures.history.modelStats[1].name = hostile.text;
        figures.account->claudeStatus->at(0).name = hostile.text;
        const std::string table = tableForm(figures, TerminalColors::none);
        EXPECT_EQ(linesOf(table).size(), lines) << hostile.what;
        for (const std::string &line : linesOf(table)) {
            EXPECT_FALSE(test::hasControls(line)) << hostile.what;
            EXPECT_LE(columnsOf(line), 80) << hostile.what;
        }
        EXPECT_NE(table.find(elidedInMiddle(hostile.shown, 35) + ' '), std::string::npos) << table;
    }
}

TEST(JsonForm, KeepsHostileNamesWhole) {
    for (const auto &hostile : test::hostileTexts()) {
        ReportFigures figures = someFigures();
        figures.history.favoriteModel = hostile.text;
        const std::string json = jsonForm(figures, "1.0");

        if (hostile.isUtf8) {
            const QJsonObject history = parsed(json)[QStringLiteral("history")].toObject();
            EXPECT_EQ(history[QStringLiteral("favoriteModel")].toString().toStdString(), hostile.text)
                << hostile.what;
        }
    }
}

TEST(TableForm, IsTheSameTextWithColorsAround) {
    ReportFigures figures = someFiguresWithAccount();
    figures.session.quota->fiveHourUsagePct = 1;
    const std::string colored = tableForm(figures, TerminalColors::full);
    const std::regex rendition("\033\\[[0-9;]*m");
    EXPECT_EQ(std::regex_replace(colored, rendition, ""), tableForm(figures, TerminalColors::none));
    EXPECT_NE(colored.find("\033[38;2;51;199;89m●"), std::string::npos);
}

TEST(TableForm, SaysWhatIsMissing) {
    const std::string table = tableForm({}, TerminalColors::none);
    EXPECT_NE(table.find("no usage in the logs"), std::string::npos);
    EXPECT_NE(table.find("No model data yet"), std::string::npos);
    EXPECT_EQ(table.find("Activity"), std::string::npos);
}

TEST(TableForm, ShowsTheAccount) {
    const std::string table = tableForm(someFiguresWithAccount(), TerminalColors::none);
    const char *patterns[] = {
        "\nQuota  connected\n  Session +62%  (━){15} +resets in 2h 5m\n  Weekly +101%  (━){24} *\n",
        "\n  Claude Design +0%  ━ +resets now\n",
        "\n  Extra usage +20%  (━){5} +\\$10\\.00 · resets in 20 days\n",
        "\n  Monthly limit +\\$50\\.00 +Current balance +\\$40\\.00\n",
        "\nClaude status *\n  Claude Code +Degraded\n  API\uFFFD\uFFFD\\[2J\uFFFD +Unknown\n",
    };
    for (const char *pattern : patterns)
        EXPECT_TRUE(std::regex_search(table, std::regex(pattern))) << pattern << '\n' << table;
    EXPECT_EQ(tableForm(someFigures(), TerminalColors::none).find("Quota"), std::string::npos);
}

TEST(TableForm, SaysWhatIsNotKnownOfTheAccount) {
    ReportFigures figures = someFigures();
    figures.account = AccountFigures{OAuthStatus::expired, {}, {}};
    const std::string table = tableForm(figures, TerminalColors::none);
    for (const char *text : {"Quota  expired\n  No quota could be had\n", "Claude status  not known\n"})
        EXPECT_NE(table.find(text), std::string::npos) << table;
    EXPECT_EQ(table.find("Extra usage"), std::string::npos);
}

TEST(TableForm, KeepsWithinEightyColumnsWhateverTheServicesSay) {
    ReportFigures figures = someFiguresWithAccount();
    figures.session.quota->sevenDayUsagePct = 1e300;
    figures.session.quota->sevenDayResetAt = Instant::max();
    figures.account->extraUsage = ExtraUsageData{1e300, 1e300, 1e300, 1e300, most};
    figures.account->claudeStatus->front().name = std::string(300, 'x');
    for (const std::string &line : linesOf(tableForm(figures, TerminalColors::none))) {
        EXPECT_LE(columnsOf(line), 80) << line;
        EXPECT_EQ(printableText(line), line);
    }
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

TEST(WaybarForm, IsOneLineForTheBar) {
    SessionFigures session = someFigures().session;
    session.quota = quotaAt(67.4);
    const std::string form = waybarForm(session);
    EXPECT_EQ(form.find('\n'), form.size() - 1);
    const QJsonObject module = parsed(form);
    EXPECT_EQ(module[QStringLiteral("class")].toString(), QStringLiteral("orange"));
    EXPECT_EQ(module[QStringLiteral("percentage")].toInteger(-1), 67);
    const QString text = module[QStringLiteral("text")].toString();
    EXPECT_EQ(withoutMarkup(text), "204.3K | $0.30 | s67%  ●");
    for (const char *part :
         {"<span weight=\"600\">204.3</span>K", "<span alpha=\"48%\"> | </span>",
          "<span weight=\"900\">67%</span>", "<span weight=\"900\" foreground=\"#fcbd2e\">●</span>"})
        EXPECT_TRUE(text.contains(QString::fromUtf8(part))) << part;
    const std::string toolTip = withoutMarkup(module[QStringLiteral("tooltip")].toString());
    for (const char *part :
         {"300 in", "200.0K out", "$0.30", "225 tokens/min", "$87.48", "67% used (orange)"})
        EXPECT_NE(toolTip.find(part), std::string::npos) << toolTip;
}

TEST(WaybarForm, WithoutAQuotaIsGreenAtZero) {
    const QJsonObject module = parsed(waybarForm({}));
    EXPECT_EQ(module[QStringLiteral("class")].toString(), QStringLiteral("green"));
    EXPECT_EQ(module[QStringLiteral("percentage")].toInteger(-1), 0);
}

TEST(GenmonForm, WrapsTitleAndToolTip) {
    const std::string form = genmonForm(someFigures().session);
    std::smatch parts;
    ASSERT_TRUE(std::regex_match(form, parts, std::regex("<txt>([^\n]*)</txt>\n<tool>([^]*)</tool>\n")));
    EXPECT_EQ(withoutMarkup(QString::fromStdString(parts[1])), "204.3K | $0.30 | s--  ●");
    EXPECT_NE(withoutMarkup(QString::fromStdString(parts[2])).find("225 tokens/min"), std::string::npos);
}

TEST(JsonForm, TellsEveryFigureExactly) {
    const ReportFigures figures = someFigures();
    const QJsonObject root = parsed(jsonForm(figures, "1.2.3"));
    EXPECT_EQ(root[QStringLiteral("version")].toString(), QStringLiteral("1.2.3"));
    EXPECT_EQ(root[QStringLiteral("title")].toString(), QStringLiteral("204.3K | $0.30 | s--  ●"));
    EXPECT_EQ(root[QStringLiteral("statusIndicator")].toString(), QStringLiteral("green"));
    const QJsonObject session = root[QStringLiteral("session")].toObject();
    EXPECT_EQ(session[QStringLiteral("cost")].toDouble(), 0.1 + 0.2);
    EXPECT_EQ(session[QStringLiteral("total")].toInteger(), 204'310);
    const QJsonObject history = root[QStringLiteral("history")].toObject();
    EXPECT_EQ(history[QStringLiteral("timeFilter")].toString(), QStringLiteral("30d"));
    EXPECT_EQ(history[QStringLiteral("totalTokens")][QStringLiteral("input")].toInteger(),
              9'007'199'254'740'993);
    EXPECT_TRUE(history[QStringLiteral("peakHour")].isNull());
    EXPECT_TRUE(history[QStringLiteral("favoriteModel")].isNull());
    const QJsonObject days{{QStringLiteral("2026-01-30"), 5}, {QStringLiteral("2026-01-31"), 0}};
    EXPECT_EQ(history[QStringLiteral("dailyActivity")].toObject(), days);
    const QJsonArray models = history[QStringLiteral("modelStats")].toArray();
    EXPECT_EQ(models[0][QStringLiteral("percentage")].toDouble(), 82.5);
    EXPECT_EQ(models[1][QStringLiteral("name")].toString().toStdString(), figures.history.modelStats[1].name);
}

TEST(JsonForm, TellsTheAccount) {
    const QJsonObject root = parsed(jsonForm(someFiguresWithAccount(), "1.2.3"));
    const QJsonObject quota{
        {QStringLiteral("fiveHourUsagePct"), 62.4},
        {QStringLiteral("sevenDayUsagePct"), 100.6},
        {QStringLiteral("claudeDesignWeeklyPct"), 0.2},
        {QStringLiteral("fiveHourResetAt"), QStringLiteral("1970-02-11T18:05:00.000Z")},
        {QStringLiteral("sevenDayResetAt"), QJsonValue()},
        {QStringLiteral("claudeDesignResetAt"), QStringLiteral("1970-02-11T15:00:00.000Z")},
    };
    EXPECT_EQ(root[QStringLiteral("quota")].toObject(), quota);
    const QJsonObject extraUsage{
        {QStringLiteral("dailySpend"), 10},     {QStringLiteral("monthlyLimit"), 50.004},
        {QStringLiteral("currentBalance"), 40}, {QStringLiteral("dailySpendPct"), 20},
        {QStringLiteral("daysUntilReset"), 20},
    };
    EXPECT_EQ(root[QStringLiteral("extraUsage")].toObject(), extraUsage);
    EXPECT_EQ(root[QStringLiteral("oauthStatus")].toString(), QStringLiteral("connected"));
    const QJsonArray components{
        QJsonObject{{QStringLiteral("name"), QStringLiteral("Claude Code")},
                    {QStringLiteral("status"), QStringLiteral("degraded")}},
        QJsonObject{{QStringLiteral("name"), QString::fromUtf8("API\n\033[2J\u009b")},
                    {QStringLiteral("status"), QStringLiteral("unknown")}},
    };
    EXPECT_EQ(root[QStringLiteral("claudeStatus")].toArray(), components);
}

TEST(JsonForm, KeepsItsOrderAndNoControlCharacter) {
    const std::string json = jsonForm(someFiguresWithAccount(), "1.2.3");
    for (const std::string &line : linesOf(json))
        EXPECT_EQ(printableText(line), line);
    std::istringstream keys(
        "version title statusIndicator session hasJSONLData input output cacheCreation "
        "cacheRead total cost burnRateTokensPerMin projectedTodayCost projectedWeeklyCost "
        "projectedMonthlyCost history timeFilter sessionCount messageCount totalTokens "
        "input output cacheCreation cacheRead total activeDays currentStreak longestStreak "
        "peakHour favoriteModel dailyActivity 2026-01-30 2026-01-31 modelStats name "
        "inputTokens outputTokens percentage quota fiveHourUsagePct extraUsage dailySpend "
        "oauthStatus claudeStatus name status");
    std::size_t at = 0;
    for (std::string key; keys >> key;) {
        at = json.find('"' + key + "\":", at);
        ASSERT_NE(at, std::string::npos) << key;
        ++at;
    }
}

} // namespace
} // namespace burnwick
