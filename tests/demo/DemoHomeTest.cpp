// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "demo/DemoHome.h"

#include "demo/StandInServices.h"
#include "model/Clock.h"
#include "report/ReportChild.h"
#include "support/JsonMembers.h"
#include "support/LogTreeFixture.h"
#include "support/ScriptedServer.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

TEST(DemoHomeTest, TheReportReadsItAndTheServices) {
    const SystemClock clock;
    const test::LogHome home;
    test::ScriptedServer services;
    demo::addLogs(home, clock.now(), Calendar::inZone("UTC"));
    demo::addSamples(home.path(), demo::limitsAt(clock.now()), Calendar::inZone("UTC"));
    demo::addLogin(home.path());
    demo::addSettings(home.path(), services.url(), QStringLiteral("dark"));
    demo::standIn(services, clock.now());

    test::Program report(home.path());
    report.set("XDG_CONFIG_HOME", (home.path() / ".config").c_str())
        .set("XDG_DATA_HOME", (home.path() / ".local" / "share").c_str())
        .set("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    const test::Outcome outcome =
        report.runWhileServing({QStringLiteral("--quota"), QStringLiteral("--json")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.errors;
    const QJsonObject figures = test::jsonObject(outcome.output);
    test::expectMembers(figures, R"({
        "oauthStatus": "connected",
        "quota": {"fiveHourUsagePct": 67, "sevenDayUsagePct": 31},
        "limits": [{"kind": "session", "usedPct": 67}, {"kind": "weekly"}, {"model": "Claude Design"}],
        "extraUsage": {"monthlyLimit": 50},
        "claudeStatus": [{"status": "operational"}, {"status": "degraded"}],
        "history": {"modelStats": [{}, {}, {}, {}]}
    })");
    EXPECT_GT(figures[QStringLiteral("history")][QStringLiteral("activeDays")].toInt(), 30);
    EXPECT_GT(figures[QStringLiteral("session")][QStringLiteral("burnRateTokensPerMin")].toDouble(), 50);
    EXPECT_GT(figures[QStringLiteral("limits")][0][QStringLiteral("forecastPct")].toDouble(), 67);
    EXPECT_EQ(services.requestsFor("/api/oauth/token").size(), 0U) << "the login expired";
}

} // namespace
} // namespace burnwick
