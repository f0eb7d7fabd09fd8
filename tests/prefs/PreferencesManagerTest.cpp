// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "prefs/PreferencesManager.h"

#include "platform/linux/defaults/JsonUserDefaults.h"
#include "prefs/SettingsFile.h"

#include <gtest/gtest.h>

#include <functional>

namespace burnwick {
namespace {

// The tests of the settings window cover that each setting is stored and loaded.

class PreferencesManagerTest : public testing::Test {
protected:
    test::SettingsFile m_file;
    JsonUserDefaults m_defaults{m_file.path};
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
    m_preferences.setRefreshRate(RefreshRate::fiveMin); // the default, which was not stored
    EXPECT_EQ(m_file.values(),
              QJsonDocument::fromJson(R"({"unknown": [1], "theme": "dark", "refreshRate": 300})").object());
}

TEST_F(PreferencesManagerTest, AnInvalidValueGivesTheFallbackAndStays) {
    using P = PreferencesManager;
    const QByteArrayList noSwitch{R"("true")", R"("false")", "0", "1"};
    const struct {
        const char *key;
        QByteArray other; ///< than the fallback
        QByteArrayList invalid;
        std::function<bool(const P &)> isFallback;
    } rows[] = {
        {"theme",
         R"("dark")",
         {R"("Dark")", R"("light ")", "true"},
         [](const P &p) { return p.theme() == Theme::system; }},
        {"refreshRate",
         "60",
         {R"("60")", "0", "120", "60.5"},
         [](const P &p) { return p.refreshRate() == RefreshRate::fiveMin; }},
        {"monthlySpendLimit",
         "75.5",
         {R"("70")", "0", "-5", "true"},
         [](const P &p) { return p.monthlySpendLimit() == 50; }},
        {"logFolders",
         R"(["/a"])",
         {R"("/a")", R"([1, "/a"])", "{}"},
         [](const P &p) { return p.logFolders().isEmpty(); }},
        {"launchAtStartup", "true", noSwitch, [](const P &p) { return !p.launchAtStartup(); }},
        {"autoRefreshQuota", "false", noSwitch, &P::autoRefreshQuota},
        {"alertAt80Quota", "false", noSwitch, &P::alertAt80Quota},
        {"rateLimitAlerts", "false", noSwitch, &P::rateLimitAlerts},
        {"sessionResetAlerts", "false", noSwitch, &P::sessionResetAlerts},
        {"paceAlerts", "true", noSwitch, [](const P &p) { return !p.paceAlerts(); }},
        {"keepHistory", "true", noSwitch, [](const P &p) { return !p.keepHistory(); }},
        {"keepHistoryAsked", "true", noSwitch, [](const P &p) { return !p.keepHistoryAsked(); }},
    };
    for (const auto &row : rows) {
        for (const QByteArray &value : row.invalid + QByteArrayList{"null", "[1]", row.other}) {
            const QByteArray before = "{\"" + QByteArray(row.key) + "\":" + value + "}";
            m_file.write(before);
            JsonUserDefaults defaults(m_file.path);
            const P preferences(defaults);
            for (const auto &each : rows)
                EXPECT_EQ(each.isFallback(preferences), &each != &row || value != row.other)
                    << each.key << " with " << before.constData();
            EXPECT_EQ(m_file.bytes(), before);
        }
    }
}

TEST_F(PreferencesManagerTest, AnyChoiceToKeepTheHistoryAnswersTheQuestion) {
    m_preferences.setKeepHistory(false);
    EXPECT_TRUE(m_preferences.keepHistoryAsked());
    EXPECT_EQ(m_file.values(),
              QJsonDocument::fromJson(R"({"keepHistory": false, "keepHistoryAsked": true})").object());
}

TEST_F(PreferencesManagerTest, TheSpendLimitIsNeverStored) {
    double announced = 0;
    QObject::connect(&m_preferences, &PreferencesManager::monthlySpendLimitChanged,
                     [&](double value) { announced = value; });
    m_preferences.setMonthlySpendLimit(80);
    EXPECT_EQ(announced, 80);
    EXPECT_EQ(m_preferences.monthlySpendLimit(), 80);
    EXPECT_TRUE(m_file.names().isEmpty());
}

} // namespace
} // namespace burnwick
