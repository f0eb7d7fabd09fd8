// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/bus/BusCall.h"

#include "support/FakeService.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QtCore/QHash>
#include <QtDBus/QDBusVariant>

#include <memory>
#include <vector>

namespace burnwick {

namespace {

using enum AppearanceWishes::Colors;

/// Returns the value in that many D-Bus variants.
QVariant wrapped(const QVariant &value, int depth = 2) {
    return depth == 0 ? value : QVariant::fromValue(QDBusVariant(wrapped(value, depth - 1)));
}

/// A desktop's settings portal. Without a value for a key it replies with the portal's error.
class FakeSettingsPortal final : public FakeService {
public:
    explicit FakeSettingsPortal(QString name = QStringLiteral("fake-portal"))
        : FakeService(std::move(name), QStringLiteral("org.freedesktop.portal.Desktop"), path()) {}

    QHash<QString, QVariant> answers; ///< sent as they are, without further variants

    void announce(const char *group, const char *key, const QVariant &value) const {
        announceAs(connection(), group, key, value);
    }
    /// Sends the portal's signal on any connection.
    static void announceAs(const QDBusConnection &sender, const char *group, const char *key,
                           const QVariant &value) {
        QDBusMessage signal = QDBusMessage::createSignal(
            path(), QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"));
        signal.setArguments({QLatin1String(group), QLatin1String(key), value});
        sender.send(signal);
        // Blocks until the bus has passed it on: it precedes later calls of other connections.
        static_cast<void>(sender.interface()->isServiceRegistered(sender.baseService()));
    }

private:
    static QString path() { return QStringLiteral("/org/freedesktop/portal/desktop"); }
    [[nodiscard]] QDBusMessage answerTo(const QDBusMessage &call) override {
        const QVariant value = answers.value(call.arguments().value(1).toString());
        return value.isValid()
                   ? call.createReply(value)
                   : call.createErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"), {});
    }
};

constexpr auto colorGroup = "org.freedesktop.appearance";
constexpr auto colorKey = "color-scheme";
constexpr auto motionGroup = "org.gnome.desktop.interface";
constexpr auto motionKey = "enable-animations";
const QString colors = QLatin1String(colorKey);
const QString animations = QLatin1String(motionKey);

using Wishes = std::vector<AppearanceWishes>;

/// Follows the appearance on the tests' bus and records the wishes.
struct Follower {
    Follower() {
        appearance->follow([this](const AppearanceWishes &now) { wishes.push_back(now); });
        EXPECT_EQ(wishes, Wishes()) << "called before follow() returned";
    }
    /// Waits for `count` in all, and for messages sent before this call.
    [[nodiscard]] Wishes waitForWishes(std::size_t count) {
        EXPECT_TRUE(waitFor([&] { return wishes.size() >= count; })) << wishes.size();
        const auto call = callMessageBus(QDBusConnection::sessionBus(), QStringLiteral("GetId"), {});
        EXPECT_TRUE(waitFor([&call] { return call.isFinished(); }));
        QCoreApplication::processEvents();
        return wishes;
    }

    std::unique_ptr<DesktopAppearance> appearance = platform::makeDesktopAppearance();
    Wishes wishes;
};

TEST(DesktopAppearance, ReadsThePortalsValues) {
    const QVariant none;
    const struct {
        const char *what;
        QVariant colors, animations;
        AppearanceWishes wishes;
    } rows[] = {
        {"no preference", wrapped(0U), wrapped(true), {noPreference, false}},
        {"dark", wrapped(1U), wrapped(true), {dark, false}},
        {"light, without animations", wrapped(2U), wrapped(false), {light, true}},
        {"in one variant", wrapped(1U, 1), wrapped(false, 1), {dark, true}},
        {"without a variant", QVariant(1U), QVariant(false), {noPreference, false}},
        {"an unknown number", wrapped(3U), wrapped(true), {noPreference, false}},
        {"of other types", wrapped(QStringLiteral("1")), wrapped(0U), {noPreference, false}},
        {"only animations", none, wrapped(false), {noPreference, true}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        FakeSettingsPortal portal;
        portal.answers = {{colors, row.colors}, {animations, row.animations}};
        Follower follower;
        EXPECT_EQ(follower.waitForWishes(1), Wishes{row.wishes});
    }
}

TEST(DesktopAppearance, FollowsChangesOfThePortalOnly) {
    FakeSettingsPortal portal;
    portal.answers = {{colors, wrapped(2U)}, {animations, wrapped(true)}};
    Follower follower;
    Wishes expected{{light, false}};
    ASSERT_EQ(follower.waitForWishes(1), expected);
    portal.announce(colorGroup, colorKey, wrapped(1U, 1));
    portal.announce(colorGroup, colorKey, wrapped(1U, 1));
    expected.push_back({dark, false});
    EXPECT_EQ(follower.waitForWishes(2), expected);

    const QString stranger = QStringLiteral("stranger");
    FakeSettingsPortal::announceAs(sessionBusOfTests().connect(stranger), colorGroup, colorKey,
                                   wrapped(2U, 1));
    portal.announce(colorGroup, "accent-color", wrapped(2U, 1));
    portal.announce(motionGroup, colorKey, wrapped(2U, 1));
    portal.announce(colorGroup, colorKey, 2U); // no variant
    portal.announce(motionGroup, motionKey, wrapped(false, 1));
    expected.push_back({dark, true});
    EXPECT_EQ(follower.waitForWishes(3), expected);
    QDBusConnection::disconnectFromBus(stranger);
}

TEST(DesktopAppearance, UsesALateReplyAndAnEarlierChange) {
    FakeSettingsPortal portal;
    portal.held = QStringList{QStringLiteral("Read")};
    portal.answers = {{colors, wrapped(1U)}};
    Follower follower;
    ASSERT_TRUE(waitFor([&] { return portal.calls.size() == 2; }));
    EXPECT_EQ(follower.waitForWishes(0), Wishes());
    portal.announce(colorGroup, colorKey, wrapped(2U, 1));
    EXPECT_EQ(follower.waitForWishes(1), (Wishes{{light, false}}));
    portal.release();
    EXPECT_EQ(follower.waitForWishes(2), (Wishes{{light, false}, {dark, false}}));
}

TEST(DesktopAppearance, KeepsThePortalsValuesUntilAnotherOneReplies) {
    Follower follower;
    EXPECT_EQ(follower.waitForWishes(1), Wishes{{}}) << "without a portal";
    auto portal = std::make_unique<FakeSettingsPortal>(QStringLiteral("first-portal"));
    portal->answers = {{colors, wrapped(1U)}, {animations, wrapped(false)}};
    EXPECT_EQ(follower.waitForWishes(3).back(), (AppearanceWishes{dark, true}));

    portal.reset(); // before the next one owns the name
    portal = std::make_unique<FakeSettingsPortal>(QStringLiteral("second-portal"));
    portal->held = QStringList{QStringLiteral("Read")};
    ASSERT_TRUE(waitFor([&] { return portal->calls.size() == 2; }));
    portal.reset(); // before it replies
    EXPECT_EQ(follower.waitForWishes(3).size(), 3U);

    portal = std::make_unique<FakeSettingsPortal>(QStringLiteral("third-portal"));
    portal->answers = {{colors, wrapped(2U)}}; // without animations
    EXPECT_EQ(follower.waitForWishes(4).back(), (AppearanceWishes{light, true}));
    portal->announce(colorGroup, colorKey, wrapped(1U, 1));
    EXPECT_EQ(follower.waitForWishes(5).back(), (AppearanceWishes{dark, true}));
}

} // namespace
} // namespace burnwick
