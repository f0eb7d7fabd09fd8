// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/notifications/LinuxNotificationCenter.h"
#include "support/FakeNotificationServer.h"
#include "support/PrivateBus.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace burnwick {
namespace {

using namespace std::chrono_literals;

/// Longer than any test waits: no answer is caused by it.
constexpr auto noLimit = 1h;
/// For missing answers; all others arrive earlier on a busy machine too.
constexpr auto shortLimit = 500ms;

const QString notifyMethod = QStringLiteral("Notify");
const QString capabilitiesMethod = QStringLiteral("GetCapabilities");

UserNotification quota(const std::string &body) {
    return {"quota80", "Quota Alert", body};
}

/// A center, its answers and the clicks that it announced.
struct Center {
    explicit Center(std::chrono::milliseconds limit = noLimit,
                    const QDBusConnection &bus = QDBusConnection::sessionBus())
        : center(std::make_unique<LinuxNotificationCenter>(bus, limit)) {
        center->setActivateHandler([this](const std::string &token) { clicks.push_back(token); });
    }

    void add(const UserNotification &notification) {
        center->add(notification, [this](const auto &error) { errors.push_back(error.value_or("none")); });
    }
    bool waitForAnswers(std::size_t count) {
        return waitFor([&] { return errors.size() >= count; }) && errors.size() == count;
    }
    /// The error with which it failed, or "none".
    std::string send(const UserNotification &notification) {
        add(notification);
        return waitForAnswers(errors.size() + 1) ? errors.back() : "no answer";
    }

    std::vector<std::string> errors;
    std::vector<std::string> clicks;
    std::unique_ptr<LinuxNotificationCenter> center;
};

TEST(NotificationDelivery, MarkupAndActionsFollowTheServersCapabilities) {
    const char *body = "Burnwick <b>2</b> & \"3\" is available.";
    const char *escaped = "Burnwick &lt;b&gt;2&lt;/b&gt; &amp; &quot;3&quot; is available.";
    const QStringList open{QStringLiteral("default"), QStringLiteral("Open")};
    const struct {
        const char *what;
        QStringList capabilities, failing;
        const char *shown;
        QStringList actions;
    } rows[] = {
        {"markup", {QStringLiteral("body-markup")}, {}, escaped, {}},
        {"links, which are markup", {QStringLiteral("body-hyperlinks")}, {}, escaped, {}},
        {"plain, with actions", {QStringLiteral("body"), QStringLiteral("actions")}, {}, body, open},
        {"nothing", {}, {}, body, {}},
        {"unknown", {}, {capabilitiesMethod}, escaped, {}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        FakeNotificationServer server;
        server.capabilities = row.capabilities;
        server.failing = row.failing;
        Center center;
        ASSERT_EQ(center.send({"updateAvailable", "Update Available", body}), "none");
        const auto &popup = server.popups.at(1);
        EXPECT_EQ(popup.body, QString::fromUtf8(row.shown));
        EXPECT_EQ(popup.actions, row.actions);
        EXPECT_EQ(popup.application, QStringLiteral("Burnwick"));
        EXPECT_EQ(popup.icon, QStringLiteral("burnwick"));
        EXPECT_EQ(popup.title, QStringLiteral("Update Available"));
        EXPECT_EQ(popup.hints,
                  QVariantMap({{QStringLiteral("desktop-entry"), QStringLiteral("burnwick")},
                               {QStringLiteral("sound-name"), QStringLiteral("message-new-instant")},
                               {QStringLiteral("urgency"), QVariant::fromValue(uchar{1})}}));
        EXPECT_EQ(popup.timeout, -1);
    }
}

TEST(NotificationDelivery, AnIdentifierUsedBeforeReplacesItsNotification) {
    FakeNotificationServer server;
    Center center;
    ASSERT_EQ(center.send(quota("one")), "none");
    ASSERT_EQ(center.send({"rateLimit", "Rate Limit Reached", "other"}), "none");
    ASSERT_EQ(center.send(quota("two")), "none");
    ASSERT_EQ(server.popups.size(), 2);
    EXPECT_EQ(server.popups.at(1).body, QStringLiteral("two"));
    EXPECT_EQ(server.popups.at(2).body, QStringLiteral("other"));
    // A closed notification is not replaced: its number may be another program's by then.
    server.close(1);
    ASSERT_EQ(center.send({"later", "Title", "its answer comes after the signal"}), "none");
    ASSERT_EQ(center.send(quota("three")), "none");
    EXPECT_EQ(server.popups.size(), 3);
    EXPECT_EQ(server.popups.at(4).body, QStringLiteral("three"));
    EXPECT_EQ(server.calls.count(capabilitiesMethod), 1);
}

TEST(NotificationDelivery, TwoAtOnceWithOneIdentifierBecomeOnePopup) {
    FakeNotificationServer server;
    server.held = QStringList{notifyMethod};
    Center center;
    center.add(quota("one"));
    center.add(quota("two"));
    center.add({"rateLimit", "Rate Limit Reached", "other"});
    // The other one does not wait for them.
    ASSERT_TRUE(waitFor([&] { return server.calls.count(notifyMethod) == 2; }));
    EXPECT_TRUE(center.errors.empty());
    server.release();
    ASSERT_TRUE(center.waitForAnswers(3));
    EXPECT_EQ(center.errors, std::vector<std::string>(3, "none"));
    ASSERT_EQ(server.popups.size(), 2);
    EXPECT_EQ(server.popups.at(1).body, QStringLiteral("two"));
}

TEST(NotificationDelivery, NumbersOfAFormerServerAreNotUsed) {
    for (const bool repliesLate : {false, true}) {
        auto former = std::make_unique<FakeNotificationServer>();
        if (repliesLate)
            former->held = QStringList{notifyMethod};
        Center center;
        center.add(quota("one"));
        ASSERT_TRUE(waitFor([&] { return former->calls.contains(notifyMethod); }));
        if (!repliesLate) {
            ASSERT_TRUE(center.waitForAnswers(1));
            former.reset(); // its end is not announced before the next call
        }
        FakeNotificationServer next(QStringLiteral("next-server"), 2);
        next.popups[1].body = QStringLiteral("another program's");
        if (repliesLate) {
            former->release();
            ASSERT_TRUE(center.waitForAnswers(1));
        }
        ASSERT_EQ(center.send(quota("two")), "none");
        EXPECT_EQ(next.popups.at(1).body, QStringLiteral("another program's"));
        EXPECT_EQ(next.popups.at(2).body, QStringLiteral("two"));
        next.click(2);
        EXPECT_TRUE(waitFor([&] { return center.clicks.size() == 1; }));
    }
}

TEST(NotificationDelivery, AFailedNotificationIsNotShownLater) {
    constexpr auto tooLong = "the notification server takes too long";
    const struct {
        const char *what;
        QStringList held, failing;
        const char *error;
        int sent;
    } rows[] = {
        // The server shows it late, so that the next one replaces it.
        {"hangs", {notifyMethod}, {}, tooLong, 2},
        {"hides its capabilities", {capabilitiesMethod}, {}, tooLong, 1},
        {"refuses", {}, {notifyMethod}, "too many notifications", 2},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        FakeNotificationServer server;
        server.held = row.held;
        server.failing = row.failing;
        Center center(shortLimit);
        EXPECT_EQ(center.send(quota("one")), row.error);
        server.failing.clear();
        server.release();
        EXPECT_EQ(center.send(quota("two")), "none");
        EXPECT_EQ(server.calls.count(notifyMethod), row.sent);
        ASSERT_EQ(server.popups.size(), 1);
        EXPECT_EQ(server.popups.at(1).body, QStringLiteral("two"));
    }
}

TEST(NotificationDelivery, FailsWithoutAServerOrABus) {
    Center center;
    center.add(quota("one"));
    ASSERT_TRUE(center.waitForAnswers(1));
    EXPECT_NE(center.errors[0], "none");
    Center busless(noLimit, QDBusConnection::connectToBus(QStringLiteral("unix:path=/nonexistent/bus"),
                                                          QStringLiteral("no-bus")));
    busless.add(quota("one"));
    EXPECT_TRUE(busless.errors.empty()) << "answered before the call returned";
    ASSERT_TRUE(busless.waitForAnswers(1));
    EXPECT_NE(busless.errors[0], "none");
    QDBusConnection::disconnectFromBus(QStringLiteral("no-bus"));
    // The server may come later.
    FakeNotificationServer server;
    EXPECT_EQ(center.send(quota("two")), "none");
}

TEST(NotificationDelivery, AnswersAfterTheDestructionAreDropped) {
    FakeNotificationServer server;
    server.held = QStringList{notifyMethod};
    Center center(shortLimit);
    Center witness;
    center.add(quota("one"));
    center.add(quota("two"));
    ASSERT_TRUE(waitFor([&] { return server.calls.contains(notifyMethod); }));
    center.center.reset();
    center.errors.clear(); // a busy machine may have reached the limit before
    server.release();
    EXPECT_EQ(witness.send(quota("three")), "none");
    EXPECT_TRUE(center.errors.empty());
}

TEST(NotificationDelivery, AClickIsAnnouncedOnceWithItsToken) {
    FakeNotificationServer server;
    Center center;
    ASSERT_EQ(center.send(quota("one")), "none");
    ASSERT_EQ(center.send({"rateLimit", "Rate Limit Reached", "other"}), "none");
    const auto stranger = sessionBusOfTests().connect(QStringLiteral("stranger"));
    QDBusMessage forged = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/Notifications"),
                                                     QStringLiteral("org.freedesktop.Notifications"),
                                                     QStringLiteral("ActionInvoked"));
    forged.setArguments({1U, QStringLiteral("default")});
    static_cast<void>(stranger.send(forged));
    server.click(77, QStringLiteral("another program's"));
    server.click(1, QStringLiteral("a button"), QStringLiteral("button"));
    server.click(1, QStringLiteral("token 1"));
    server.click(1, QStringLiteral("token 1 again"));
    server.click(2);
    ASSERT_TRUE(waitFor([&] { return center.clicks.size() == 2; }));
    EXPECT_EQ(center.clicks, std::vector<std::string>({"token 1", ""}));
    // A new notification can be clicked anew, also in the server's list of those that disappeared.
    ASSERT_EQ(center.send(quota("two")), "none");
    server.close(1);
    server.click(1, QStringLiteral("token 2"));
    ASSERT_TRUE(waitFor([&] { return center.clicks.size() == 3; }));
    EXPECT_EQ(center.clicks.back(), "token 2");
    QDBusConnection::disconnectFromBus(QStringLiteral("stranger"));
}

} // namespace
} // namespace burnwick
