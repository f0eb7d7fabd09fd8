// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/Dunst.h"
#include "platform/linux/notifications/LinuxNotificationCenter.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace burnwick {
namespace {

using Authorization = NotificationCenter::Authorization;

const QString centerName = QStringLiteral("dunst-client");

class DunstTest : public testing::Test {
protected:
    ~DunstTest() override { QDBusConnection::disconnectFromBus(centerName); }

    std::string send(const UserNotification &notification) {
        std::optional<std::string> outcome;
        m_center.add(notification, [&](const auto &error) { outcome = error.value_or("none"); });
        return waitFor([&] { return outcome.has_value(); }) ? *outcome : "no answer";
    }
    Authorization authorization() {
        std::optional<Authorization> answer;
        m_center.readAuthorization([&](Authorization now) { answer = now; });
        return waitFor([&] { return answer.has_value(); }) ? *answer : Authorization::denied;
    }
    bool request() {
        std::optional<bool> granted;
        m_center.requestAuthorization([&](const auto &outcome) { granted = outcome.granted; });
        return waitFor([&] { return granted.has_value(); }) && *granted;
    }

    test::Dunst m_dunst;
    LinuxNotificationCenter m_center{m_dunst.bus().connect(centerName)};
};

TEST_F(DunstTest, ShowsWhatItIsSentAndTellsAClick) {
    ASSERT_EQ(send({"quota80", "Quota Alert", "You've used 85% of your 5-hour quota."}), "none");
    ASSERT_EQ(send({"updateAvailable", "Update Available", "Burnwick <b>2</b> & more"}), "none");
    ASSERT_EQ(send({"quota80", "Quota Alert", "You've used 91% of your 5-hour quota."}), "none");
    EXPECT_TRUE(waitFor([this] { return m_dunst.displayed() == 2; })) << m_dunst.displayed();

    const QString texts = m_dunst.closeAll().join(u'\n');
    EXPECT_TRUE(texts.contains(QStringLiteral("Burnwick &lt;b&gt;2&lt;/b&gt; &amp; more")))
        << texts.toStdString();
    EXPECT_TRUE(texts.contains(QStringLiteral("used 91%"))) << texts.toStdString();
    EXPECT_FALSE(texts.contains(QStringLiteral("used 85%"))) << texts.toStdString();

    std::vector<std::string> clicks;
    m_center.setActivateHandler([&](const std::string &token) { clicks.push_back(token); });
    ASSERT_EQ(send({"quota80", "Quota Alert", "You've used 95% of your 5-hour quota."}), "none");
    EXPECT_TRUE(waitFor([this] { return m_dunst.displayed() == 1; }));
    m_dunst.click();
    EXPECT_TRUE(waitFor([&] { return !clicks.empty(); }));
    EXPECT_EQ(clicks, std::vector<std::string>(1));
}

TEST_F(DunstTest, IsStartedWhenItIsNeededAndMayEndInBetween) {
    int announcements = 0;
    m_center.setAuthorizationChangedHandler([&] { ++announcements; });
    EXPECT_EQ(authorization(), Authorization::notDetermined);
    EXPECT_FALSE(m_dunst.runs());
    EXPECT_TRUE(request());
    EXPECT_EQ(authorization(), Authorization::authorized);
    ASSERT_EQ(send({"quota80", "Quota Alert", "one"}), "none");

    announcements = 0;
    m_dunst.end();
    ASSERT_TRUE(waitFor([&] { return announcements == 1; }));
    EXPECT_EQ(authorization(), Authorization::authorized);
    EXPECT_FALSE(m_dunst.runs());

    ASSERT_EQ(send({"quota80", "Quota Alert", "two"}), "none");
    EXPECT_TRUE(waitFor([this] { return m_dunst.displayed() == 1; })) << m_dunst.displayed();
}

} // namespace
} // namespace burnwick
