// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/appearance/LinuxDesktopAppearance.h"

#include "platform/FakeSettingsPortal.h"
#include "support/PrivateBus.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <ostream>
#include <vector>

namespace burnwick {

using enum AppearanceWishes::Colors;

static void PrintTo(const AppearanceWishes &wishes, std::ostream *out) {
    *out << (wishes.colors == dark    ? "dark"
             : wishes.colors == light ? "light"
                                      : "no preference")
         << (wishes.reducedMotion ? ", reduced motion" : "");
}

namespace {

constexpr auto colorGroup = "org.freedesktop.appearance";
constexpr auto colorKey = "color-scheme";
constexpr auto motionGroup = "org.gnome.desktop.interface";
constexpr auto motionKey = "enable-animations";
const QString colors = QLatin1String(colorKey);
const QString animations = QLatin1String(motionKey);

using Wishes = std::vector<AppearanceWishes>;

/// Follows the desktop of the tests' bus and records the wishes it is called with.
struct Follower {
    explicit Follower(const QDBusConnection &bus = QDBusConnection::sessionBus()) {
        appearance.emplace(bus);
        appearance->follow([this](const AppearanceWishes &now) { wishes.push_back(now); });
        EXPECT_EQ(wishes, Wishes()) << "called before follow() returned";
    }
    /// Waits for that many in all, and for what was sent to this process before.
    [[nodiscard]] Wishes waitForWishes(std::size_t count) {
        EXPECT_TRUE(waitFor([&] { return wishes.size() >= count; })) << wishes.size();
        const auto call = QDBusConnection::sessionBus().asyncCall(
            QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                           QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
        EXPECT_TRUE(waitFor([&call] { return call.isFinished(); }));
        QCoreApplication::processEvents();
        return wishes;
    }

    std::optional<LinuxDesktopAppearance> appearance;
    Wishes wishes;
};

TEST(DesktopAppearance, ThePortalsValuesAreRead) {
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

TEST(DesktopAppearance, OnlyThePortalsChangesAreFollowed) {
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

TEST(DesktopAppearance, ALateReplyAndAnEarlierChangeCount) {
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

TEST(DesktopAppearance, ThePortalsValuesHoldUntilAnotherOneReplies) {
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

TEST(DesktopAppearance, WithoutABusTheHandlerGetsTheDefaults) {
    Follower follower(QDBusConnection(QStringLiteral("no such connection")));
    EXPECT_EQ(follower.waitForWishes(1), Wishes{{}});
}

} // namespace
} // namespace burnwick
