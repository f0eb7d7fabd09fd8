// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "notify/NotificationManager.h"

#include "platform/linux/defaults/JsonUserDefaults.h"
#include "prefs/PreferencesManager.h"
#include "prefs/SettingsFile.h"
#include "support/LogCapture.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <utility>
#include <vector>

namespace burnwick {
namespace {

using namespace std::chrono_literals;

const QString alertedAt80 = QStringLiteral("notif_alert80_windowId");
const QString alertedRateLimit = QStringLiteral("notif_rateLimit_windowId");
constexpr double infinity = std::numeric_limits<double>::infinity();

/// Accepts every notification and answers on request.
class RecordingCenter final : public NotificationCenter {
public:
    void readAuthorization(std::function<void(Authorization)> answer) override {
        answer(Authorization::notDetermined);
    }
    void requestAuthorization(std::function<void(AuthorizationOutcome)>) override {}
    void setAuthorizationChangedHandler(std::function<void()>) override {}
    void add(const UserNotification &notification,
             std::function<void(std::optional<std::string> error)> answer) override {
        added.push_back(notification);
        answers.push_back(std::move(answer));
    }
    void setActivateHandler(ActivateHandler) override {}

    std::vector<UserNotification> added;
    std::vector<std::function<void(std::optional<std::string>)>> answers;
};

/// A run of the program with its own settings.
struct ProgramRun {
    [[nodiscard]] std::string alertsFor(double usagePct, std::optional<Instant> resetAt) {
        AccountFigures account;
        account.quotaData.emplace();
        account.quotaData->fiveHourUsagePct = usagePct;
        account.quotaData->fiveHourResetAt = resetAt;
        center.added.clear();
        manager.checkQuota(account);
        std::string identifiers;
        for (const UserNotification &notification : center.added)
            identifiers += notification.identifier + ' ';
        return identifiers;
    }

    explicit ProgramRun(const QString &file)
        : defaults(file) {}

    test::ManualClock clock{"2025-11-16T12:00:00.25Z"};
    JsonUserDefaults defaults;
    PreferencesManager preferences{defaults};
    RecordingCenter center;
    NotificationManager manager{center, preferences, defaults, clock};
};

TEST(QuotaAlert, EachIsDueOncePerWindowAndAResetAfterAWindowOfThisRun) {
    const Instant first = test::at("2025-11-16T13:30:00Z");
    const Instant next = first + 5h;
    const std::string reset = "sessionReset-1763294400.25 ";
    const struct {
        const char *what;
        double usagePct;
        std::optional<Instant> resetAt;
        std::string due;
        bool restarts = false;
    } rows[] = {
        {"no reset instant", 100, {}, ""},
        {"just below 80", 79.99, first, ""},
        {"not a number", std::numeric_limits<double>::quiet_NaN(), first, ""},
        {"infinite", infinity, first, ""},
        {"80 exactly", 80, first, "quota80 "},
        {"just below 100", 99.99, first, ""},
        {"the instant varies by the tolerance", 92, first + 60s, ""},
        {"the other way, from the first instant", 92, first - 60s, ""},
        {"after a restart", 92, first + 59s, "", true},
        {"100 exactly", 100, first, "rateLimit "},
        {"again", 100, first, ""},
        {"no reset instant in between", 100, {}, ""},
        {"the next window: both, and the reset", 100, next, "quota80 rateLimit " + reset},
        {"beyond the tolerance", 50, next + 60s + 1ns, reset},
        {"a window of an earlier run", 100, first, "quota80 rateLimit ", true},
        {"the next, unused", 3, next, reset},
    };
    const test::SettingsFile file;
    auto run = std::make_unique<ProgramRun>(file.path);
    for (const auto &row : rows) {
        if (row.restarts)
            run = std::make_unique<ProgramRun>(file.path);
        EXPECT_EQ(run->alertsFor(row.usagePct, row.resetAt), row.due) << row.what;
    }
}

TEST(QuotaAlert, EachFollowsItsPreference) {
    const Instant resetAt = test::at("2025-11-16T13:30:00Z");
    using P = PreferencesManager;
    const std::pair<void (P::*)(bool), const char *> rows[] = {
        {&P::setAlertAt80Quota, "rateLimit sessionReset-1763294400.25 "},
        {&P::setRateLimitAlerts, "quota80 sessionReset-1763294400.25 "},
        {&P::setSessionResetAlerts, "quota80 rateLimit "}};
    for (const auto &[set, due] : rows) {
        const test::SettingsFile file;
        ProgramRun run(file.path);
        EXPECT_EQ(run.alertsFor(1, resetAt - 5h), "");
        (run.preferences.*set)(false);
        EXPECT_EQ(run.alertsFor(100, resetAt), due);
        run.preferences.setSessionResetAlerts(true);
        EXPECT_EQ(run.alertsFor(1, resetAt), "") << "the window is known";
    }
}

TEST(QuotaAlert, AWindowThatWillBeFullEarlyIsAnnouncedOnceAtTheUsersWish) {
    const test::SettingsFile file;
    auto run = std::make_unique<ProgramRun>(file.path);
    const Instant now = run->clock.now();
    const Instant reset = now + 3h;
    const auto steady = [&](double usedPct) {
        return LimitCourse{{Limit::Kind::session, {}, usedPct, reset, now},
                           {{reset - 5h, 0}, {now - 1h, usedPct / 2}, {now, usedPct}}};
    };
    LimitCourse weekly = steady(90);
    weekly.limit.kind = Limit::Kind::weekly;
    LimitCourse unknownReset = steady(90);
    unknownReset.limit.resetsAt.reset();
    LimitCourse nextWindow = steady(90);
    nextWindow.limit.resetsAt = reset + 61s;
    const auto alert = [&](std::vector<LimitCourse> courses) {
        UsageFigures usage{Calendar::inZone("UTC")};
        usage.limitCourses = std::move(courses);
        run->center.added.clear();
        run->manager.checkPace(usage);
        return run->center.added.empty() ? std::string() : run->center.added.front().body;
    };
    EXPECT_EQ(alert({steady(90)}), "") << "switched off at first";
    run->preferences.setPaceAlerts(true);
    const struct {
        const char *what;
        std::vector<LimitCourse> courses;
        const char *due;
        bool restarts = false;
    } rows[] = {
        {"no limit", {}, ""},
        {"another limit", {weekly}, ""},
        {"without a reset", {unknownReset}, ""},
        {"will last", {steady(20)}, ""},
        {"full already: another alert says so", {steady(100)}, ""},
        {"after another limit",
         {weekly, steady(90)},
         "You will reach the limit at 12:15, 2h 45m before it resets."},
        {"again", {steady(95)}, ""},
        {"after a restart", {steady(95)}, "", true},
        {"the next window", {nextWindow}, "You will reach the limit at 12:15, 2h 46m before it resets."},
    };
    for (const auto &row : rows) {
        if (row.restarts)
            run = std::make_unique<ProgramRun>(file.path);
        EXPECT_EQ(alert(row.courses), row.due) << row.what;
    }
}

TEST(QuotaAlert, AWindowIsStoredAsItsResetInstant) {
    const struct {
        const char *resetAt, *stored;
        const char *due;
    } rows[] = {
        {"2025-11-16T13:30:00Z", "1763299800.0", ""},
        {"2025-11-16T13:30:01.987654Z", "1763299801.987654", ""},
        {"1970-01-01T00:00:00Z", "0.0", ""},
        {"2200-01-01T00:00:00Z", "7258118400.0", ""},
        {"2025-11-16T13:30:00Z", "1763282000.0", "quota80 rateLimit "},
        {"2025-11-16T13:30:00Z", "1763299800.0 ", "quota80 rateLimit "},
        {"2025-11-16T13:30:00Z", "inf", "quota80 rateLimit "},
    };
    for (const auto &row : rows) {
        const test::SettingsFile file;
        ProgramRun run(file.path);
        const auto stored = QString::fromLatin1(row.stored);
        run.defaults.set(alertedAt80, stored);
        run.defaults.set(alertedRateLimit, stored);
        EXPECT_EQ(run.alertsFor(100, test::at(row.resetAt)), row.due) << row.stored;
        if (*row.due != '\0')
            continue;
        run.defaults.set(alertedAt80, QString());
        run.defaults.set(alertedRateLimit, QString());
        EXPECT_EQ(run.alertsFor(100, test::at(row.resetAt)), "quota80 rateLimit ");
        EXPECT_EQ(file.values(), QJsonObject({{alertedAt80, stored}, {alertedRateLimit, stored}}));
    }
}

TEST(QuotaAlert, TheTextsHaveWholePercentAndHoursAndMinutesCutOff) {
    const struct {
        double usagePct;
        const char *used;
        std::chrono::nanoseconds left;
        const char *resetsIn;
    } rows[] = {
        {100.9, "100%", 1h + 5min, "1h 5m"},
        {1234567.8, "1234567%", 1h - 1ns, "59m"},
        {1e20, "100000000000000000000%", 240h + 9min, "240h 9m"},
        {101, "101%", -1ns, "0m"},
        {101, "101%", -200'000h, "0m"},
    };
    for (const auto &row : rows) {
        const test::SettingsFile file;
        ProgramRun run(file.path);
        EXPECT_NE(run.alertsFor(row.usagePct, run.clock.now() + row.left), "");
        const std::vector<UserNotification> expected{
            {"quota80", "Quota Alert", std::string("You've used ") + row.used + " of your 5-hour quota."},
            {"rateLimit", "Rate Limit Reached",
             std::string("You've hit your rate limit. Quota resets in ") + row.resetsIn + "."}};
        EXPECT_EQ(run.center.added, expected);
    }
}

TEST(QuotaAlert, AFailedDeliveryIsLoggedAndNotRepeated) {
    const test::LogCapture log;
    const test::SettingsFile file;
    ProgramRun run(file.path);
    EXPECT_EQ(run.alertsFor(85, test::at("2025-11-16T13:30:00Z")), "quota80 ");
    run.center.answers.at(0)("the server is gone");
    EXPECT_EQ(log.lines(), QStringList(QStringLiteral("Failed to deliver quota80: the server is gone")));
    EXPECT_EQ(run.alertsFor(90, test::at("2025-11-16T13:30:00Z")), "");
}

TEST(UpdateAlert, AnnouncesTheVersionAsOneLineOfText) {
    const test::SettingsFile file;
    ProgramRun run(file.path);
    run.manager.sendUpdateAvailable("2\n<b>0</b>");
    EXPECT_EQ(run.center.added.back(),
              UserNotification({"updateAvailable", "Update Available",
                                "Burnwick 2\uFFFD<b>0</b> is available. Open Settings to update."}));
}

} // namespace
} // namespace burnwick
