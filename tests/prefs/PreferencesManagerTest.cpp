// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "prefs/PreferencesManager.h"

#include "prefs/SettingsFile.h"
#include "prefs/UserDefaults.h"

#include <gtest/gtest.h>

#include <QVariant>

#include <functional>

namespace burnwick {
namespace {

// The tests of the settings' view cover that each setting is stored, and loaded by the next start.

class PreferencesManagerTest : public testing::Test {
protected:
    test::SettingsFile m_file;
    UserDefaults m_defaults{m_file.path};
    PreferencesManager m_preferences{m_defaults};
};

TEST_F(PreferencesManagerTest, AChangeIsEmittedOnceAndThenStoredBesideUnknownKeys) {
    m_file.write(R"({"unknown": [1]})");
    int changes = 0;
    QObject::connect(&m_preferences, &PreferencesManager::themeChanged, [&](Theme announced) {
        EXPECT_EQ(announced, Theme::dark);
        EXPECT_EQ(m_preferences.theme(), Theme::dark);
        EXPECT_FALSE(m_file.values().contains(u"theme")) << "written before the signal";
        ++changes;
    });
    m_preferences.setTheme(Theme::dark);
    m_preferences.setTheme(Theme::dark);
    EXPECT_EQ(changes, 1);
    // Stored when the user picks it, although it is the default.
    m_preferences.setRefreshRate(RefreshRate::fiveMin);
    EXPECT_EQ(m_file.values(),
              QJsonDocument::fromJson(R"({"unknown": [1], "theme": "dark", "refreshRate": 300})").object());
}

TEST_F(PreferencesManagerTest, JunkGivesTheFallbackAndStays) {
    using P = PreferencesManager;
    const QByteArrayList noTheme{R"("Dark")", R"("light ")", "true", "1"};
    const QByteArrayList noRate{R"("60")", "0", "-60", "120", "60.5", "true"};
    const QByteArrayList noSwitch{R"("false")", R"("true")", "0", "1"};
    const QByteArrayList noLimit{R"("70")", "0", "-5", "true"};
    const struct {
        const char *key;
        QByteArray other; ///< than the fallback
        QByteArrayList junk;
        std::function<bool(const P &)> isFallback;
    } rows[] = {
        {"theme", R"("dark")", noTheme, [](const P &p) { return p.theme() == Theme::system; }},
        {"refreshRate", "60", noRate, [](const P &p) { return p.refreshRate() == RefreshRate::fiveMin; }},
        {"launchAtStartup", "true", noSwitch, [](const P &p) { return !p.launchAtStartup(); }},
        {"autoRefreshQuota", "false", noSwitch, &P::autoRefreshQuota},
        {"alertAt80Quota", "false", noSwitch, &P::alertAt80Quota},
        {"rateLimitAlerts", "false", noSwitch, &P::rateLimitAlerts},
        {"sessionResetAlerts", "false", noSwitch, &P::sessionResetAlerts},
        {"monthlySpendLimit", "75.5", noLimit, [](const P &p) { return p.monthlySpendLimit() == 50; }},
    };
    for (const auto &row : rows) {
        for (const QByteArray &value : row.junk + QByteArrayList{"null", "[1]", "{}", R"("")"}) {
            const QByteArray before = "{\"" + QByteArray(row.key) + "\":" + value + "}";
            m_file.write(before);
            UserDefaults defaults(m_file.path);
            EXPECT_TRUE(row.isFallback(P(defaults))) << before.constData();
            EXPECT_EQ(m_file.bytes(), before);
        }
        m_file.write("{\"" + QByteArray(row.key) + "\":" + row.other + "}");
        UserDefaults defaults(m_file.path);
        for (const auto &each : rows)
            EXPECT_EQ(each.isFallback(P(defaults)), &each != &row) << each.key << " with " << row.key;
    }
}

TEST_F(PreferencesManagerTest, TheSpendLimitIsLoadedButNeverStored) {
    const QByteArray before = R"({"monthlySpendLimit": 75.5})";
    m_file.write(before);
    UserDefaults defaults(m_file.path);
    PreferencesManager preferences(defaults);
    EXPECT_EQ(preferences.monthlySpendLimit(), 75.5);
    double announced = 0;
    QObject::connect(&preferences, &PreferencesManager::monthlySpendLimitChanged,
                     [&](double value) { announced = value; });
    preferences.setMonthlySpendLimit(80);
    EXPECT_EQ(announced, 80);
    EXPECT_EQ(preferences.monthlySpendLimit(), 80);
    EXPECT_EQ(m_file.bytes(), before);
}

TEST_F(PreferencesManagerTest, AnAssignmentByAnObserverIsStored) {
    QObject::connect(&m_preferences, &PreferencesManager::themeChanged,
                     [&](Theme) { m_preferences.setTheme(Theme::light); });
    m_preferences.setTheme(Theme::dark);
    EXPECT_EQ(m_preferences.theme(), Theme::light);
    EXPECT_EQ(m_file.values().value(u"theme"), QStringLiteral("light"));
}

} // namespace
} // namespace burnwick
