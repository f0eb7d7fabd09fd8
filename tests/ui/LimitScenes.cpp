// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/LimitCourses.h"
#include "ui/DashboardScenes.h"

#include <cmath>

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;
using Fixture = DashboardFixture;
using Kind = Limit::Kind;
using Points = std::vector<std::pair<std::chrono::minutes, double>>;

/// At 12:55 of the session from 10:00 to 15:00.
const Points shape{{0min, 0},   {10min, 2},   {30min, 13},  {45min, 22},  {60min, 33},
                   {90min, 47}, {105min, 52}, {120min, 56}, {150min, 61}, {175min, 67}};
const Points steep{{0min, 0},    {20min, 5},   {30min, 8},   {60min, 20}, {90min, 40},
                   {105min, 52}, {135min, 71}, {150min, 76}, {175min, 88}};

Points scaled(Points points, double share) {
    for (auto &[time, percent] : points)
        percent = std::round(percent * share);
    return points;
}

const Points calm = scaled(shape, 0.62);

const Instant now = std::chrono::sys_days(std::chrono::year(2025) / 6 / 10) + 12h + 55min;

LimitCourse sessionThrough(const Points &points) {
    return courseThrough(Kind::session, now + 125min, points);
}

/// Shows three limits, of which that one is the session, with extra usage.
void show(Fixture &fixture, const LimitCourse &session) {
    fixture.pass(55min - 1s)
        .addHistory()
        .answerStatus("operational", "degraded_performance")
        .logIn(withExtraUsage)
        .settle();
    LimitCourse weekly = courseThrough(
        Kind::weekly, now + 3 * 24h + 14h + 5min,
        {{0min, 0}, {600min, 8}, {24h, 9}, {30h, 15}, {42h, 15.5}, {58h, 26}, {70h, 27}, {81h + 55min, 31}},
        15min);
    LimitCourse sonnet = weekly;
    sonnet.limit.kind = Kind::weeklyScoped;
    sonnet.limit.model = "Sonnet";
    fixture.setCourses({session, weekly, sonnet});
}

} // namespace

std::vector<DashboardScene> limitScenes() {
    return {
        {"limits-calm",
         [](Fixture &f) { show(f, sessionThrough(calm)); },
         {"Limits", "Session", "Weekly", "Sonnet", "Probably "}},
        {"limits-near",
         [](Fixture &f) { show(f, sessionThrough(scaled(shape, 0.88))); },
         {"Could be full by "}},
        {"limits-urgent", [](Fixture &f) { show(f, sessionThrough(steep)); }, {"Full at 13:"}},
        {"limits-collecting",
         [](Fixture &f) {
             show(f, sessionThrough({{170min, 3}, {175min, 4}}));
         },
         {"Collecting…", "A forecast takes ten minutes", "Used now: 4%, Even pace now: 58%"}},
        {"limits-quiet",
         [](Fixture &f) {
             Points points = calm;
             points.resize(7);
             points.emplace_back(175min, 32);
             show(f, sessionThrough(points));
         },
         {"Quiet: stays at 32% until 15:00"}},
        {"limits-full",
         [](Fixture &f) {
             Points points = steep;
             points.insert(points.end() - 1, {160min, 100});
             points.back().second = 100;
             show(f, sessionThrough(points));
         },
         {"Full until 15:00", "2h 5m to wait"}},
        {"limits-waiting",
         [](Fixture &f) { show(f, courseThrough(Kind::session, now - 1min, calm)); },
         {"Reset at 12:54, waiting for figures"}},
        {"limits-stale",
         [](Fixture &f) {
             Points points = calm;
             points.back() = {140min, 37};
             points.erase(points.end() - 2);
             show(f, sessionThrough(points));
             f.loseTheQuota();
         },
         {"37% used", "Last measured at 12:20", "Updated just now · the quota is asked again at 13:05"}},
        {"limits-gap",
         [](Fixture &f) {
             LimitCourse course = sessionThrough({{40min, 10}, {60min, 17}});
             const LimitCourse later = sessionThrough({{110min, 27}, {175min, 41}});
             course.limit = later.limit;
             course.samples.insert(course.samples.end(), later.samples.begin(), later.samples.end());
             show(f, course);
         },
         {"Probably "}},
        {"limits-weekly",
         [](Fixture &f) { show(f, sessionThrough(calm)); },
         {"Limits, Weekly", "Could be full by Fri 20:00", "Probably 63% when it resets on Sat 03:00"},
         {},
         0,
         "Weekly"},
        {"limits-no-window",
         [](Fixture &f) {
             LimitCourse course;
             f.pass(55min - 1s).addHistory().logIn(0).settle();
             f.setCourses({course});
         },
         {"0% used", "The window begins with the next answer"},
         {"Shown limit"}},
        {"limits-keep-history",
         [](Fixture &f) { show(f.askToKeep(), sessionThrough(calm)); },
         {"Claude Code deletes logs after 30 days. Keep your history?", "Probably "}},
        {"limits-of-many-models",
         [](Fixture &f) {
             LimitCourse session = sessionThrough(calm);
             show(f, session);
             std::vector<LimitCourse> courses{session};
             for (const char *name : {"Claude Design", "Sonnet", "Opus", "Some model with a really long name",
                                      "A & B", "Haiku", "One more", "And another", "And the last"}) {
                 courses.push_back(session);
                 courses.back().limit.kind = Kind::weeklyScoped;
                 courses.back().limit.model = name;
             }
             f.setCourses(courses);
         },
         {"Sonnet: 42% used, resets in 2h 5m", "Opus: 42% used", "Some model with a really long name"},
         {"And the last"}},
    };
}

} // namespace burnwick::test
