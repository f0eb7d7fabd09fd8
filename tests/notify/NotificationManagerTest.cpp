// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "notify/NotificationManager.h"

#include "platform/NotificationCenter.h"
#include "prefs/SettingsFile.h"
#include "prefs/UserDefaults.h"
#include "support/LogCapture.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace burnwick {
namespace {

using namespace std::chrono_literals;

const QString alertedAt80 = QStringLiteral("notif_alert80_windowId");
const QString alertedRateLimit = QStringLiteral("notif_rateLimit_windowId");

/// Takes everything and answers when told to.
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

    [[nodiscard]] std::vector<std::string> takeIdentifiers() {
        std::vector<std::string> identifiers;
        for (const UserNotification &notification : std::exchange(added, {}))
            identifiers.push_back(notification.identifier);
        return identifiers;
    }

    std::vector<UserNotification> added;
    std::vector<std::function<void(std::optional<std::string>)>> answers;
};

class NotificationManagerTest : public testing::Test {
protected:
    using Identifiers = std::vector<std::string>;

    /// What the manager of a freshly started program sends.
    Identifiers checkAfterRestart(double usagePct) {
        UserDefaults defaults(m_file.path);
        NotificationManager manager(m_center, defaults, m_clock);
        manager.checkQuota(m_reset, true, true, usagePct);
        return m_center.takeIdentifiers();
    }
    Identifiers check(double usagePct) {
        m_manager.checkQuota(m_reset, true, true, usagePct);
        return m_center.takeIdentifiers();
    }

    test::SettingsFile m_file;
    UserDefaults m_defaults{m_file.path};
    test::ManualClock m_clock{"2025-11-16T12:00:00Z"};
    Instant m_reset = test::at("2025-11-16T13:30:00.4Z");
    RecordingCenter m_center;
    NotificationManager m_manager{m_center, m_defaults, m_clock};
};

TEST_F(NotificationManagerTest, EachQuotaAlertComesOnceInAWindowAlsoAcrossRestarts) {
    EXPECT_EQ(check(85.0), Identifiers({"quota80"}));
    EXPECT_EQ(check(92.0), Identifiers());
    m_reset += 5200ms; // the same window, computed anew
    EXPECT_EQ(check(93.0), Identifiers());
    EXPECT_EQ(checkAfterRestart(94.0), Identifiers());
    EXPECT_EQ(checkAfterRestart(100.0), Identifiers({"rateLimit"}));
    EXPECT_EQ(checkAfterRestart(100.0), Identifiers());
    m_reset += 5h;
    EXPECT_EQ(checkAfterRestart(85.0), Identifiers({"quota80"}));
    EXPECT_EQ(checkAfterRestart(100.0), Identifiers({"rateLimit"}));
}

TEST_F(NotificationManagerTest, BothAlertsSayWhatTheyAreAbout) {
    m_manager.checkQuota(m_reset, true, true, 100.9);
    const std::vector<UserNotification> expected{
        {"quota80", "Quota Alert", "You've used 100% of your 5-hour quota."},
        {"rateLimit", "Rate Limit Reached", "You've hit your rate limit. Quota resets in 1h 30m."}};
    EXPECT_EQ(m_center.added, expected);
    EXPECT_EQ(m_file.values(), QJsonObject({{alertedAt80, QStringLiteral("1763299800.4")},
                                            {alertedRateLimit, QStringLiteral("1763299800.4")}}));
}

TEST_F(NotificationManagerTest, AWindowIsRememberedEvenIfDeliveryFails) {
    const test::LogCapture log;
    check(79.9);
    EXPECT_EQ(m_file.values(), QJsonObject());
    check(85.0);
    EXPECT_EQ(m_file.values().value(alertedAt80), QStringLiteral("1763299800.4"));
    m_center.answers.at(0)("the server is gone");
    EXPECT_EQ(log.lines(), QStringList(QStringLiteral("Failed to deliver quota80: the server is gone")));
    EXPECT_EQ(check(90.0), Identifiers());
}

TEST_F(NotificationManagerTest, ResetsAndUpdatesComeWheneverTheyAreSent) {
    m_manager.sendSessionReset();
    m_clock.advance(5h);
    m_manager.sendSessionReset();
    m_manager.sendUpdateAvailable("2.0");
    m_manager.send("own", "Title", "Body");
    EXPECT_EQ(m_center.added.back(), UserNotification({"own", "Title", "Body"}));
    EXPECT_EQ(
        m_center.takeIdentifiers(),
        Identifiers({"sessionReset-1763294400.0", "sessionReset-1763312400.0", "updateAvailable", "own"}));
}

} // namespace
} // namespace burnwick
