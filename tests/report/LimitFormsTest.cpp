// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forecast/Forecast.h"
#include "forms/BarForms.h"
#include "forms/JsonForm.h"
#include "forms/TerminalText.h"
#include "report/FormsFixture.h"
#include "support/HostileTexts.h"
#include "support/JsonMembers.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::emptySnapshot;
using test::expectMatches;
using test::expectMembers;
using test::jsonObject;
using test::linesOf;
using test::now;
using test::someFiguresWithAccount;
using test::tableOf;
using test::withoutMarkup;

/// The session's limit has a forecast; the others' names and figures are unusual.
Snapshot someLimits(const std::string &model) {
    Snapshot snapshot = emptySnapshot();
    const Limit session{Limit::Kind::session, {}, 60, now + 2h, now - 1min};
    const Limit weekly{Limit::Kind::weekly, {}, 1000, std::nullopt, now - 3h};
    const Limit scoped{Limit::Kind::weeklyScoped, model, 0.5, now + 100h, now - 1min};
    snapshot.account.limits = {session, weekly, scoped};
    snapshot.account.quotaReadAt = now - 1min;
    snapshot.usage.limitCourses = {
        {session, {{now - 2h, 20}, {now - 1h, 40}, {now - 1min, 60}}, {}},
        {weekly, {{weekly.observedAt, 1000}}, {}},
        {scoped, {{scoped.observedAt, 0.5}}, {}},
    };
    return snapshot;
}

TEST(LimitForms, TableShowsLimitsAlsoWhereNobodyWasAsked) {
    Snapshot snapshot = someLimits("Opus");
    const char *sentences =
        "\n  Session +(Probably|Full|Could be full) .*\n  Weekly +1000% used · The window begins "
        "with the next answer\n  Opus +Collecting… · A forecast takes ten minutes\n";
    expectMatches(tableOf(snapshot),
                  {"\nQuota\n  Session +60%  (━){15} +resets in 2h 0m\n  Weekly +1000%  (━){24}\n"
                   "  Opus +0%  ━ +resets in 4d 4h\n",
                   sentences});
    EXPECT_EQ(tableOf(snapshot).find("Claude status"), std::string::npos);
    snapshot.account.isQuotaStale = true;
    expectMatches(tableOf(snapshot), {"\nQuota  as of 15:59\n"});

    Snapshot asked = someFiguresWithAccount();
    asked.account.limits = snapshot.account.limits;
    asked.usage.limitCourses = snapshot.usage.limitCourses;
    expectMatches(tableOf(asked),
                  {"\nQuota  connected\n  Session +62% .*\n  Weekly +101% .*\n  Claude Design .*\n"
                   "  Opus +0%  ━ .*\n  Session +(Probably|Full|Could)",
                   sentences});

    for (const auto &hostile : test::hostileTexts()) {
        Snapshot figures = someLimits(hostile.text);
        LimitCourse &weekly = figures.usage.limitCourses[1]; // its words are longer than the line
        weekly.limit.resetsAt = now + 72h;
        weekly.samples = {{now - 48h, 10}, {now - 24h, 40}, {now - 1min, 70}};
        const auto lines = linesOf(tableOf(figures));
        expectMatches(tableOf(figures), {"\n  Weekly +Full on .* before it resets\n"});
        EXPECT_EQ(lines.size(), linesOf(tableOf(snapshot)).size()) << hostile.what;
        for (const std::string &line : lines) {
            EXPECT_FALSE(test::hasControls(line)) << hostile.what;
            EXPECT_LE(columnsOf(line), 80) << hostile.what;
        }
    }
}

TEST(LimitForms, BarsHaveALineForEachLimit) {
    Snapshot snapshot = someLimits("<b>Opus & \"x\"");
    snapshot.account.isQuotaStale = true;
    const QString toolTip = jsonObject(waybarForm(snapshot, now))[QStringLiteral("tooltip")].toString();
    expectMatches(
        withoutMarkup(toolTip),
        {"not known \\(green\\)\nSession: (Probably|Full|Could be full) .*\n<b>Opus & \"x\": Collecting…\n"
         "as of 15:59$"});
    EXPECT_NE(genmonForm(snapshot, now).find("\n" + toolTip.section(u'\n', -2).toStdString() + "</tool>"),
              std::string::npos);
    for (const auto &hostile : test::hostileTexts()) {
        if (hostile.isUtf8)
            withoutMarkup(
                jsonObject(waybarForm(someLimits(hostile.text), now))[QStringLiteral("tooltip")].toString());
    }
}

TEST(LimitForms, JsonHasEachLimitWithItsForecast) {
    const Snapshot snapshot = someLimits("Opus");
    const QJsonArray limits =
        jsonObject(jsonForm(snapshot, "1.2.3", now))[QStringLiteral("limits")].toArray();
    expectMembers(limits, jsonObject(R"({"limits": [
        {"kind": "session", "model": null, "usedPct": 60, "resetsAt": "1970-02-11T18:00:00.000Z",
         "observedAt": "1970-02-11T15:59:00.000Z"},
        {"kind": "weekly", "model": null, "usedPct": 1000, "resetsAt": null, "forecastPct": null,
         "forecastLow": null, "forecastHigh": null, "fullAt": null},
        {"kind": "weekly_scoped", "model": "Opus", "usedPct": 0.5, "forecastPct": null}
    ]})")[QStringLiteral("limits")]);
    const Forecast forecast = forecastOf(snapshot.usage.limitCourses[0], now);
    const std::pair<const char *, double> expected[] = {{"forecastPct", forecast.atReset.value().middle},
                                                        {"forecastLow", forecast.atReset.value().low},
                                                        {"forecastHigh", forecast.atReset.value().high}};
    for (const auto &[key, value] : expected)
        EXPECT_EQ(limits[0][QLatin1String(key)].toDouble(), value) << key;
    EXPECT_LT(forecast.atReset->low, forecast.atReset->middle);
    Snapshot full = snapshot;
    full.usage.limitCourses[0].samples.back().percent = 100;
    EXPECT_EQ(jsonObject(jsonForm(full, "1.2.3", now))[QStringLiteral("limits")][0][QStringLiteral("fullAt")],
              QStringLiteral("1970-02-11T15:59:00.000Z"));
}

} // namespace
} // namespace burnwick
