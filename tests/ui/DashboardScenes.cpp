// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/DashboardScenes.h"

#include <QCoreApplication>
#include <QDateTime>

#include <array>
#include <random>

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;

std::string lineAt(Instant instant, int input, int output, int cacheCreation, int cacheRead,
                   std::string_view model) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(instant).time_since_epoch().count();
    const QString stamp =
        QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC).toString(u"yyyy-MM-ddTHH:mm:ss.000Z"_qs);
    return usageLine(stamp.toStdString(), input, output, cacheCreation, cacheRead, model);
}

const char *const extraUsage =
    R"({"is_enabled":true,"monthly_limit":5000,"used_credits":1240,"utilization":24.8})";

} // namespace

DashboardFixture::DashboardFixture() {
    answerStatus("operational", "operational");
}

void DashboardFixture::addHistory() {
    constexpr std::array models{"claude-sonnet-4-5-20250929", "claude-opus-4-1-20250805",
                                "claude-haiku-4-5-20251001"};
    std::mt19937 random(7); // NOLINT: the same picture each time
    const Instant now = m_clock.now();
    for (int day = 61; day >= 0; --day) {
        if (random() % 7 == 0 && day != 0)
            continue;
        std::string lines;
        const int sessions = 1 + static_cast<int>(random() % 4);
        for (int i = 0; i < 30 * sessions; ++i) {
            const Instant at = now - day * 24h - (30 * sessions - i) * 1min;
            const int size = 1 + static_cast<int>(random() % 60);
            lines +=
                lineAt(at, 900 * size, 220 * size, 700 * size, 9'000 * size, models[random() % 6 / 2 % 3]);
        }
        m_home.add("project/day" + std::to_string(day) + ".jsonl", lines, now - day * 24h);
    }
}

void DashboardFixture::addModels(const std::vector<std::string> &names) {
    std::string lines;
    int size = static_cast<int>(names.size());
    for (const std::string &name : names)
        lines += lineAt(m_clock.now() - 1h, 40'000 * size--, 12'000, 0, 0, name);
    m_home.add("models.jsonl", lines, m_clock.now());
}

void DashboardFixture::answerUsage(double fiveHourPct, const std::string &extra) {
    ScriptedAnswer answer;
    answer.body = R"({"five_hour":{"utilization":)" + QByteArray::number(fiveHourPct) +
                  R"(,"resets_at":"2025-06-10T14:05:30Z"},)"
                  R"("seven_day":{"utilization":31,"resets_at":"2025-06-14T02:10:00Z"},)"
                  R"("seven_day_omelette":{"utilization":8,"resets_at":"2025-06-15T14:30:00Z"},)"
                  R"("extra_usage":)" +
                  QByteArray::fromStdString(extra) + "}";
    m_server.script("/api/oauth/usage", {answer});
}

void DashboardFixture::answerStatus(const QByteArray &claudeCode, const QByteArray &api) {
    const auto component = [](const QByteArray &id, const QByteArray &name, const QByteArray &status) {
        return R"({"id":")" + id + R"(","name":")" + name + R"(","status":")" + status + R"("})";
    };
    ScriptedAnswer answer;
    answer.body = R"({"components":[)" + component("yyzkbfz2thpt", "Claude Code", claudeCode) + "," +
                  component("k8w3r06qmzrp", "Claude API (api.anthropic.com)", api) + "]}";
    m_server.script("/api/v2/components.json", {answer});
}

void DashboardFixture::settle() {
    const Instant before = m_state.lastUpdated();
    m_clock.advance(1s);
    m_state.start();
    ASSERT_TRUE(waitFor([&] {
        return m_state.lastUpdated() != before && m_state.oauthStatus() != OAuthStatus::unknown &&
               !m_state.claudeStatus().empty();
    }));
    QCoreApplication::processEvents();
}

const std::vector<DashboardScene> &dashboardScenes() {
    using Fixture = DashboardFixture;
    static const std::vector<DashboardScene> scenes{
        {"no-logs",
         [](Fixture &f) { f.settle(); },
         0,
         {"OAuth token not found", "Open Settings to connect your Claude account",
          "OAuth token status: Disconnected", "Re-authenticate", "Sessions: 0", "Peak hour: --",
          "Claude Code: Operational"},
         {"QUOTA", "BURN RATE", "EXTRA USAGE"}},
        {"no-account",
         [](Fixture &f) {
             f.addHistory();
             f.settle();
         },
         0,
         {"OAuth token not found", "BURN RATE", "Favorite model: Sonnet", "Longest streak: 15d"},
         {"QUOTA"}},
        {"connected",
         [](Fixture &f) {
             f.addHistory();
             f.logIn();
             f.answerUsage(67);
             f.settle();
         },
         0,
         {"OAuth token status: Connected", "Reconnect", "Session: 67% used, resets in 2h 5m",
          "Weekly: 31% used, resets in 3d 14h", "Claude Design: 8% used, resets in 5d 2h", "Reset 2h 5m",
          "Updated just now"},
         {"OAuth token not found", "EXTRA USAGE"}},
        {"extra-usage",
         [](Fixture &f) {
             f.addHistory();
             f.logIn();
             f.answerUsage(67, extraUsage);
             f.answerStatus("operational", "degraded_performance");
             f.settle();
         },
         0,
         {"$12.40 spent, 25% · 20 days left", "Monthly limit: $50.00", "Current balance: $37.60",
          "Claude API (api.anthropic.com): Degraded"},
         {}},
        {"models",
         [](Fixture &f) {
             f.addHistory();
             f.logIn();
             f.answerUsage(67, extraUsage);
             f.settle();
         },
         1,
         {"claude-sonnet-4-5-20250929"},
         {"No model data yet"}},
        {"above-limit",
         [](Fixture &f) {
             f.addHistory();
             f.logIn();
             f.answerUsage(130);
             f.settle();
         },
         0,
         {"Session: 130% used, resets in 2h 5m"},
         {}},
        {"token-expired",
         [](Fixture &f) {
             f.addHistory();
             f.logIn();
             f.rejectToken();
             f.settle();
         },
         0,
         {"OAuth token status: Token Expired", "Re-authenticate", "OAuth token not found"},
         {}},
        {"authenticating",
         [](Fixture &f) {
             f.settle();
             f.logInAgain();
         },
         0,
         {"OAuth token status: Authenticating…", "Waiting for browser…"},
         {"Re-authenticate", "Retry", "Reconnect"}},
        {"outage",
         [](Fixture &f) {
             f.addHistory();
             f.logIn();
             f.answerUsage(12);
             f.answerStatus("major_outage", "something new");
             f.settle();
         },
         0,
         {"Claude Code: Outage", "Claude API (api.anthropic.com): Unknown",
          "Session: 12% used, resets in 2h 5m"},
         {}},
        {"ten-models",
         [](Fixture &f) {
             std::vector<std::string> names;
             for (int i = 0; i < 10; ++i)
                 names.push_back("vendor-" + std::to_string(i) + "/<b>a-model</b>-with-quite-a-long-name-" +
                                 std::string(90, 'x'));
             f.addModels(names);
             f.settle();
         },
         1,
         {"vendor-0/<b>a-model</b>-with-quite-a-long-name-"},
         {}},
        {"no-models", [](Fixture &f) { f.settle(); }, 1, {"No model data yet"}, {"Tokens per day"}},
        {"first-second",
         [](Fixture &) {},
         0,
         {"OAuth token status: Unknown", "Retry", "Fetching status…", "Sessions: 0", "Updated just now"},
         {}},
    };
    return scenes;
}

} // namespace burnwick::test
