// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/DashboardScenes.h"

#include "support/VisibleControls.h"

#include <QCoreApplication>
#include <QTest>

#include <algorithm>
#include <array>
#include <iterator>
#include <random>

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;

std::string lineAt(Instant instant, int input, int output, int cacheCreation, int cacheRead,
                   std::string_view model) {
    const std::string stamp = printTimestamp(std::chrono::floor<std::chrono::seconds>(instant), 3);
    return usageLine(stamp, input, output, cacheCreation, cacheRead, model);
}

constexpr const char *up = "operational";

} // namespace

const ScriptedAnswer withExtraUsage =
    usageAnswer(67, R"({"is_enabled":true,"monthly_limit":5000,"used_credits":1240,"utilization":24.8})");

DashboardFixture::DashboardFixture() {
    answerStatus(up, up);
    m_preferences.setKeepHistoryAsked(true);
}

DashboardFixture &DashboardFixture::askToKeep() {
    m_preferences.setKeepHistoryAsked(false);
    return *this;
}

DashboardFixture &DashboardFixture::addHistory(int days) {
    constexpr std::array models{"claude-sonnet-4-5-20250929", "claude-opus-4-1-20250805",
                                "claude-haiku-4-5-20251001"};
    std::mt19937 random(7); // NOLINT: the same picture each time
    const Instant now = m_clock.now();
    for (int day = days; day >= 0; --day) {
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
    return *this;
}

DashboardFixture &DashboardFixture::addModels(int count) {
    std::string lines;
    for (int i = 0; i < count; ++i) {
        const std::string name = "vendor-" + std::to_string(i) + "/<b>a-model</b>-with-quite-a-long-name-";
        lines += lineAt(m_clock.now() - 1h, 40'000 * (count - i), 12'000, 0, 0, name + std::string(90, 'x'));
    }
    m_home.add("models.jsonl", lines, m_clock.now());
    return *this;
}

DashboardFixture &DashboardFixture::logIn(const ScriptedAnswer &usage) {
    m_store.blob = R"({"claudeAiOauth":{"accessToken":"a"}})";
    m_server.script(usagePath, {usage});
    return *this;
}

DashboardFixture &DashboardFixture::answerStatus(const QByteArray &claudeCode, const QByteArray &api) {
    const auto component = [](const QByteArray &id, const QByteArray &name, const QByteArray &status) {
        return R"({"id":")" + id + R"(","name":")" + name + R"(","status":")" + status + R"("})";
    };
    ScriptedAnswer answer;
    answer.body = R"({"components":[)" + component("yyzkbfz2thpt", "Claude Code", claudeCode) + "," +
                  component("k8w3r06qmzrp", "Claude API (api.anthropic.com)", api) + "]}";
    m_server.script(statusPath, {answer});
    return *this;
}

void DashboardFixture::setCourses(const std::vector<LimitCourse> &courses) {
    auto &[usage, account] = snapshot();
    usage.limitCourses = courses;
    account.limits.clear();
    for (const LimitCourse &course : courses)
        account.limits.push_back(course.limit);
    account.quotaData->fiveHourUsagePct = courses.front().limit.usedPct;
    account.quotaData->fiveHourResetAt = courses.front().limit.resetsAt;
    Q_EMIT m_state.objectWillChange();
}

void DashboardFixture::setBreakdown(UsageBreakdown breakdown) {
    UsageFigures &usage = snapshot().usage;
    usage.breakdown = std::make_shared<const UsageBreakdown>(std::move(breakdown));
    Q_EMIT m_state.objectWillChange();
}

void DashboardFixture::loseTheQuota() {
    AccountFigures &account = snapshot().account;
    account.isQuotaStale = true;
    account.quotaReadAt = m_clock.now() - 35min;
    account.asksAgainAt = m_clock.now() + 10min;
    Q_EMIT m_state.objectWillChange();
}

void DashboardFixture::begin() {
    const Instant before = usage().lastUpdated;
    m_clock.advance(1s);
    m_state.start();
    ASSERT_TRUE(waitFor([&] { return usage().lastUpdated != before && !account().claudeStatus.empty(); }));
    QCoreApplication::processEvents();
}

void DashboardFixture::settle() {
    begin();
    ASSERT_TRUE(waitFor([this] {
        return account().oauthStatus != OAuthStatus::unknown &&
               account().limits.size() == snapshot().usage.limitCourses.size();
    }));
    QCoreApplication::processEvents();
}

void DashboardFixture::play(const DashboardScene &scene, MainWindowView &window) {
    window.show();
    scene.prepare(*this);
    if (scene.tab > 0)
        QTest::keyClick(&window, static_cast<Qt::Key>(Qt::Key_1 + scene.tab), Qt::ControlModifier);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents(); // the window adopts the size of its new content
    if (scene.pressed != nullptr)
        press(window, QAccessible::RadioButton, scene.pressed);
}

const std::vector<DashboardScene> &dashboardScenes() {
    using Fixture = DashboardFixture;
    static const std::vector<DashboardScene> scenes = [] {
        std::vector<DashboardScene> all{
            {"no-logs",
             [](Fixture &f) { f.settle(); },
             {"OAuth token not found", "Open Settings to connect your Claude account",
              "OAuth token status: Disconnected", "Re-authenticate", "Sessions: 0", "Peak hour: --",
              "Claude Code: Operational"},
             {"QUOTA", "BURN RATE", "EXTRA USAGE"}},
            {"no-account",
             [](Fixture &f) { f.addHistory().settle(); },
             {"OAuth token not found", "BURN RATE", "Favorite model: Sonnet", "Longest streak: 15d"},
             {"QUOTA"}},
            {"connected",
             [](Fixture &f) { f.addHistory().logIn(67).settle(); },
             {"OAuth token status: Connected", "Reconnect", "Session: 67% used, resets in 2h 5m",
              "Weekly: 31% used, resets in 3d 14h", "Claude Design: 8% used, resets in 5d 2h", "Reset 2h 5m",
              "Updated just now"},
             {"OAuth token not found", "EXTRA USAGE"}},
            {"extra-usage",
             [](Fixture &f) {
                 f.addHistory().logIn(withExtraUsage).answerStatus(up, "degraded_performance").settle();
             },
             {"$12.40 spent, 25% · 20 days left", "Monthly limit: $50.00", "Current balance: $37.60",
              "Claude API (api.anthropic.com): Degraded"}},
            {"keep-history",
             [](Fixture &f) { f.addHistory(29).askToKeep().logIn(withExtraUsage).settle(); },
             {"Claude Code deletes logs after 30 days. Keep your history?", "Keep", "Not now"}},
            {"models",
             [](Fixture &f) { f.addHistory().logIn(withExtraUsage).settle(); },
             {"claude-sonnet-4-5-20250929"},
             {"No model data yet"},
             1},
            {"above-limit",
             [](Fixture &f) { f.addHistory().logIn(130).settle(); },
             {"Session: 130% used, resets in 2h 5m"}},
            {"token-expired",
             [](Fixture &f) { f.addHistory().logIn(ScriptedAnswer{401}).settle(); },
             {"OAuth token status: Token Expired", "Re-authenticate", "OAuth token not found"}},
            {"authenticating",
             [](Fixture &f) {
                 f.settle();
                 f.startLogin();
             },
             {"OAuth token status: Authenticating…", "Waiting for browser…"},
             {"Re-authenticate", "Retry", "Reconnect"}},
            {"outage",
             [](Fixture &f) {
                 f.addHistory().logIn(12).answerStatus("major_outage", "something new").settle();
             },
             {"Claude Code: Outage", "Claude API (api.anthropic.com): Unknown",
              "Session: 12% used, resets in 2h 5m"}},
            {"ten-models",
             [](Fixture &f) { f.addModels(10).settle(); },
             {"vendor-0/<b>a-model</b>-with-quite-a-long-name-"},
             {},
             1},
            {"no-models", [](Fixture &f) { f.settle(); }, {"No model data yet"}, {"Tokens per day"}, 1},
            {"first-answer-awaited",
             [](Fixture &f) { f.addHistory().logIn(held(usageAnswer(67))).begin(); },
             {"QUOTA", "Session: –", "Weekly: –", "Claude Design: –", "OAuth token status: Unknown", "Retry"},
             {"OAuth token not found"}},
            {"first-second",
             [](Fixture &) {},
             {"OAuth token status: Unknown", "Retry", "Fetching status…", "Sessions: 0", "Updated just now"}},
        };
        std::ranges::move(limitScenes(), std::back_inserter(all));
        std::ranges::move(projectScenes(), std::back_inserter(all));
        return all;
    }();
    return scenes;
}

} // namespace burnwick::test
