// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/ProjectScenes.h"

#include "ui/DashboardScenes.h"

#include <QDir>

#include <algorithm>
#include <random>
#include <utility>

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;

struct Sample {
    const char *path;
    double cost;
    std::int64_t tokens;
    std::int64_t unpriced;
    std::int64_t sessions;
    std::chrono::minutes age;
    int firstDay; ///< days ago
    int lastDay;
};

constexpr Sample samples[] = {
    {"~/work/atlas", 228.54, 116'800'000, 0, 37, 2min, 61, 0},
    {"~/work/billing-api", 192.40, 106'800'000, 0, 25, 180min, 60, 0},
    {"~/clients/nordwind/imports/nightly/invoice-import", 89.48, 42'400'000, 0, 14, 24h, 27, 1},
    {"~/work/parser", 70.35, 48'400'000, 0, 13, 31 * 24h, 61, 31},
    {"~/work/website", 21.88, 17'300'000, 1'200'000, 10, 4 * 24h, 61, 4},
    {"~/src/tide-charts", 15.83, 10'400'000, 0, 8, 240min, 22, 0},
    {"~/src/kiln", 8.57, 5'500'000, 0, 5, 9 * 24h, 46, 9},
    {"~/.dotfiles", 2.45, 2'300'000, 0, 3, 13 * 24h, 46, 13},
    {"/srv/backup", 1.9, 1'100'000, 0, 2, 40 * 24h, 50, 40},
    {"", 1.09, 300'000, 0, 1, 200 * 24h, 61, 45},
    {"~/work/experiments", 0, 5'900'000, 5'900'000, 1, 5 * 24h, 6, 5},
};

std::string withHome(std::string path) {
    return path.starts_with('~') ? QDir::homePath().toStdString() + path.substr(1) : path;
}

ProjectUsage usageOf(const Sample &sample, Instant now, std::mt19937 &random) {
    ProjectUsage usage{.path = withHome(sample.path), .sessions = sample.sessions};
    usage.total = {sample.tokens, sample.unpriced, sample.cost};
    usage.loggedTokens = 3 * sample.tokens;
    usage.lastUsed = now - sample.age;
    const LocalDay today = Calendar::inZone("UTC").dayOf(now);
    for (int day = sample.firstDay; day >= sample.lastDay; --day) {
        const auto part = static_cast<std::int64_t>(random() % 100);
        if (part < 45 && day != sample.lastDay)
            continue;
        const std::int64_t tokens = part * part * sample.tokens / 100'000;
        usage.days[today - std::chrono::days(day)] = {tokens, 0, 0};
        usage.loggedDays[today - std::chrono::days(day)] = 3 * tokens;
    }
    return usage;
}

void showBreakdown(DashboardFixture &fixture, TimeFilter filter = TimeFilter::all) {
    fixture.setTimeFilter(filter);
    fixture.addHistory().logIn(withExtraUsage).answerStatus("operational", "degraded_performance").settle();
    fixture.setBreakdown(sampleBreakdown(at("2025-06-10T12:00:01.000Z")));
}

} // namespace

UsageBreakdown sampleBreakdown(Instant now) {
    std::mt19937 random(11); // NOLINT: the same picture each time
    UsageBreakdown breakdown;
    for (const Sample &sample : samples) {
        ProjectUsage usage = usageOf(sample, now, random);
        breakdown.total.tokens += usage.total.tokens;
        breakdown.total.unpriced += usage.total.unpriced;
        breakdown.total.cost += usage.total.cost;
        for (const auto &[day, priced] : usage.days)
            breakdown.days[day].tokens += priced.tokens;
        breakdown.projects.push_back(std::move(usage));
    }
    std::ranges::sort(breakdown.projects, {}, &ProjectUsage::path);
    const auto model = [](const char *name, std::int64_t unpriced, double cost) {
        ModelUsage usage{.name = name};
        usage.total = {100'000'000, unpriced, cost};
        return usage;
    };
    breakdown.models = {model("claude-haiku-4-5-20251001", 100'000'000, 0),
                        model("claude-opus-4-1-20250805", 0, 266.71),
                        model("claude-sonnet-4-5-20250929", 0, 348.63)};
    return breakdown;
}

std::vector<DashboardScene> projectScenes() {
    using Fixture = DashboardFixture;
    return {
        {"projects",
         [](Fixture &f) { showBreakdown(f); },
         {"atlas, ~/work/atlas", "$228.54, 36%", "$2.45, <1%", "Yesterday",
          "Total: 11 projects · 7.1M with no price, $632.49, "},
         {"No projects yet"},
         2},
        {"projects-week",
         [](Fixture &f) { showBreakdown(f, TimeFilter::sevenDays); },
         {"atlas, ~/work/atlas"},
         {},
         2},
        {"no-projects", [](Fixture &f) { f.settle(); }, {"No projects yet"}, {"Total"}, 2},
        {"models-with-costs",
         [](Fixture &f) { showBreakdown(f); },
         {"Cost", "claude-sonnet-4-5-20250929: ", "$348.63", "no price"},
         {},
         1},
    };
}

} // namespace burnwick::test
