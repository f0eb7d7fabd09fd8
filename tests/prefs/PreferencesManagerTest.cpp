// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "prefs/PreferencesManager.h"

#include "prefs/Settings.h"
#include "prefs/SettingsFile.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QSet>

#include <vector>

namespace burnwick {
namespace {

using test::SettingsFile;

template <typename Value>
struct Row {
    const Setting<Value> &setting;
    Value (PreferencesManager::*get)() const;
    void (PreferencesManager::*set)(Value);
    void (PreferencesManager::*changed)(Value);
};

/// Calls the visitor with the row of each setting that is written.
template <typename Visitor>
void forEachWritten(Visitor visit) {
    using P = PreferencesManager;
    visit(Row<Theme>{settings::theme, &P::theme, &P::setTheme, &P::themeChanged});
    visit(
        Row<RefreshRate>{settings::refreshRate, &P::refreshRate, &P::setRefreshRate, &P::refreshRateChanged});
    const Row<bool> switches[] = {
        {settings::launchAtStartup, &P::launchAtStartup, &P::setLaunchAtStartup, &P::launchAtStartupChanged},
        {settings::autoRefreshQuota, &P::autoRefreshQuota, &P::setAutoRefreshQuota,
         &P::autoRefreshQuotaChanged},
        {settings::alertAt80Quota, &P::alertAt80Quota, &P::setAlertAt80Quota, &P::alertAt80QuotaChanged},
        {settings::rateLimitAlerts, &P::rateLimitAlerts, &P::setRateLimitAlerts, &P::rateLimitAlertsChanged},
        {settings::sessionResetAlerts, &P::sessionResetAlerts, &P::setSessionResetAlerts,
         &P::sessionResetAlertsChanged},
    };
    for (const auto &row : switches)
        visit(row);
}

template <typename Visitor>
void forEach(Visitor visit) {
    using P = PreferencesManager;
    forEachWritten(visit);
    visit(Row<double>{settings::monthlySpendLimit, &P::monthlySpendLimit, &P::setMonthlySpendLimit,
                      &P::monthlySpendLimitChanged});
}

std::vector<Theme> valuesOf(Theme) {
    return {allThemes.begin(), allThemes.end()};
}
std::vector<RefreshRate> valuesOf(RefreshRate) {
    return {allRefreshRates.begin(), allRefreshRates.end()};
}
std::vector<bool> valuesOf(bool) {
    return {true, false};
}

// What is no value of the type, but would pass for another one if it were converted.
QJsonArray junkFor(Theme) {
    return {QStringLiteral("Dark"), QStringLiteral(""), QStringLiteral("light "), true, 1};
}
QJsonArray junkFor(RefreshRate) {
    return {QStringLiteral("60"), 0, -60, 120, 60.5, true};
}
QJsonArray junkFor(bool) {
    return {QStringLiteral("false"), QStringLiteral("true"), QStringLiteral(""), 0, 1};
}
QJsonArray junkFor(double) {
    return {QStringLiteral("70"), 0, -5, -0.5, true};
}

QByteArray fileWith(const QString &key, const QJsonValue &value) {
    return QJsonDocument(QJsonObject{{key, value}, {QStringLiteral("unknown"), QJsonArray{1}}}).toJson();
}

TEST(PreferencesManager, KeysAreUnique) {
    QSet<QString> keys;
    int rows = 0;
    forEach([&](const auto &row) {
        keys.insert(row.setting.key);
        ++rows;
    });
    EXPECT_EQ(keys.size(), rows);
}

TEST(PreferencesManager, EachValueSurvivesARestartAndUnknownKeysStay) {
    forEachWritten([](const auto &row) {
        SCOPED_TRACE(row.setting.key.latin1());
        for (const auto value : valuesOf(row.setting.fallback)) {
            const SettingsFile file;
            file.write(R"({"unknown": [1]})");
            UserDefaults defaults(file.path);
            PreferencesManager preferences(defaults);
            int changes = 0;
            QObject::connect(&preferences, row.changed, [&](auto announced) {
                EXPECT_EQ(announced, value);
                EXPECT_EQ((preferences.*row.get)(), value);
                EXPECT_FALSE(file.values().contains(row.setting.key)) << "written before it was announced";
                ++changes;
            });
            (preferences.*row.set)(value);
            (preferences.*row.set)(value);
            EXPECT_EQ(changes, value == row.setting.fallback ? 0 : 1);
            // Picked by the user, so stored, be it the default or not.
            EXPECT_TRUE(file.values().contains(row.setting.key));
            EXPECT_EQ(file.values().value(QLatin1String("unknown")), QJsonArray{1});

            UserDefaults afterwards(file.path);
            EXPECT_EQ((PreferencesManager(afterwards).*row.get)(), value);
        }
    });
}

TEST(PreferencesManager, JunkGivesTheFallbackAndStays) {
    forEach([](const auto &row) {
        auto junk = junkFor(row.setting.fallback);
        for (const auto &other : {QJsonValue(), QJsonValue(QJsonArray{1}), QJsonValue(QJsonObject())})
            junk.append(other);
        for (const QJsonValue value : junk) {
            const SettingsFile file;
            file.write(fileWith(row.setting.key, value));
            const QByteArray before = file.bytes();
            UserDefaults defaults(file.path);
            EXPECT_EQ((PreferencesManager(defaults).*row.get)(), row.setting.fallback) << before.constData();
            EXPECT_EQ(file.bytes(), before);
        }
    });
}

TEST(PreferencesManager, TheSpendLimitIsReadButNeverWritten) {
    const SettingsFile file;
    for (const auto &[json, limit] :
         {std::pair("75.5", 75.5), std::pair("3", 3.0), std::pair("0.01", 0.01)}) {
        file.write(QByteArray("{\"monthlySpendLimit\": ") + json + "}");
        const QByteArray before = file.bytes();
        UserDefaults defaults(file.path);
        PreferencesManager preferences(defaults);
        EXPECT_EQ(preferences.monthlySpendLimit(), limit);
        double announced = 0;
        QObject::connect(&preferences, &PreferencesManager::monthlySpendLimitChanged,
                         [&](double value) { announced = value; });
        preferences.setMonthlySpendLimit(80);
        EXPECT_EQ(announced, 80);
        EXPECT_EQ(preferences.monthlySpendLimit(), 80);
        EXPECT_EQ(file.bytes(), before);
    }
}

TEST(PreferencesManager, AnObserverMayAssignAgain) {
    const SettingsFile file;
    UserDefaults defaults(file.path);
    PreferencesManager preferences(defaults);
    QObject::connect(&preferences, &PreferencesManager::themeChanged,
                     [&](Theme) { preferences.setTheme(Theme::light); });
    preferences.setTheme(Theme::dark);
    EXPECT_EQ(preferences.theme(), Theme::light);
    EXPECT_EQ(file.values().value(QLatin1String("theme")), QStringLiteral("light"));
}

} // namespace
} // namespace burnwick
