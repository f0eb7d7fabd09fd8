// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/appearance/LinuxDesktopAppearance.h"

#include "platform/FakeSettingsPortal.h"
#include "support/PrivateBus.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <limits>
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

const QString colorGroup = QStringLiteral("org.freedesktop.appearance");
const QString colorKey = QStringLiteral("color-scheme");
const QString motionGroup = QStringLiteral("org.gnome.desktop.interface");
const QString motionKey = QStringLiteral("enable-animations");

const QVariant portalDark = wrapped(1U);
const QVariant portalLight = wrapped(2U);

/// Follows the desktop of the tests' bus and writes down what it hears.
struct Follower {
    explicit Follower(const QDBusConnection &bus = QDBusConnection::sessionBus()) {
        appearance.emplace(bus);
        appearance->follow([this](const AppearanceWishes &wishes) { heard.push_back(wishes); });
    }
    /// Waits for that many in all, and that no more come with what is under way.
    [[nodiscard]] std::vector<AppearanceWishes> hear(std::size_t count) {
        EXPECT_TRUE(waitFor([&] { return heard.size() >= count; })) << heard.size();
        letThrough();
        return heard;
    }
    /// What was sent to this process before, was handled after this.
    static void letThrough() {
        QDBusConnection bus = QDBusConnection::sessionBus();
        const auto call = bus.asyncCall(
            QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                           QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
        EXPECT_TRUE(waitFor([&call] { return call.isFinished(); }));
        QCoreApplication::processEvents();
    }

    std::optional<LinuxDesktopAppearance> appearance;
    std::vector<AppearanceWishes> heard;
};

using Heard = std::vector<AppearanceWishes>;

TEST(DesktopAppearance, ThePortalsValuesAreUnderstood) {
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
        {"in five variants", wrapped(1U, 5), wrapped(false, 5), {dark, true}},
        {"in none", QVariant(1U), QVariant(false), {noPreference, false}},
        {"numbers to come", wrapped(3U), wrapped(true), {noPreference, false}},
        {"of other types", wrapped(QStringLiteral("1")), wrapped(0U), {noPreference, false}},
        {"only animations", none, wrapped(false), {noPreference, true}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        FakeSettingsPortal portal;
        if (row.colors.isValid())
            portal.answers[colorKey] = row.colors;
        if (row.animations.isValid())
            portal.answers[motionKey] = row.animations;
        Follower follower;
        EXPECT_EQ(follower.heard, Heard()) << "the call itself waited";
        EXPECT_EQ(follower.hear(1), Heard{row.wishes});
    }
}

TEST(DesktopAppearance, ChangesAreFollowedAndOnlyThePortals) {
    FakeSettingsPortal portal;
    portal.answers = {{colorKey, portalLight}, {motionKey, wrapped(true)}};
    Follower follower;
    Heard expected{{light, false}};
    ASSERT_EQ(follower.hear(1), expected);

    portal.announce(colorGroup, colorKey, wrapped(1U, 1));
    portal.announce(colorGroup, colorKey, wrapped(1U, 1));
    expected.push_back({dark, false});
    EXPECT_EQ(follower.hear(2), expected);
    portal.announce(motionGroup, motionKey, wrapped(false, 1));
    expected.push_back({dark, true});
    EXPECT_EQ(follower.hear(3), expected);

    const QString stranger = QStringLiteral("stranger");
    sendSettingChanged(sessionBusOfTests().connect(stranger), colorGroup, colorKey, wrapped(2U, 1));
    portal.announce(colorGroup, QStringLiteral("accent-color"), wrapped(2U, 1));
    portal.announce(motionGroup, colorKey, wrapped(2U, 1));
    portal.announce(colorGroup, colorKey, 2U); // no variant
    portal.announce(motionGroup, motionKey, wrapped(true, 1));
    expected.push_back({dark, false});
    EXPECT_EQ(follower.hear(4), expected);
    QDBusConnection::disconnectFromBus(stranger);

    portal.announce(colorGroup, colorKey, wrapped(QStringLiteral("dark"), 1));
    expected.push_back({noPreference, false});
    EXPECT_EQ(follower.hear(5), expected);
}

TEST(DesktopAppearance, APortalThatDoesNotAnswerIsNotWaitedFor) {
    FakeSettingsPortal portal;
    portal.held = QStringList{QStringLiteral("Read")};
    portal.answers = {{colorKey, portalDark}};
    Follower follower;
    ASSERT_TRUE(waitFor([&] { return portal.calls.size() == 2; }));
    Follower::letThrough();
    EXPECT_EQ(follower.heard, Heard());

    // It announces changes even so, and its late answer counts.
    portal.announce(colorGroup, colorKey, wrapped(2U, 1));
    EXPECT_EQ(follower.hear(1), (Heard{{light, false}}));
    portal.release();
    EXPECT_EQ(follower.hear(2), (Heard{{light, false}, {dark, false}}));
}

TEST(DesktopAppearance, APortalThatGoesKeepsItsWordUntilItIsBack) {
    Follower follower;
    EXPECT_EQ(follower.hear(1), Heard{{}}) << "without a portal";

    auto portal = std::make_unique<FakeSettingsPortal>(QStringLiteral("first-portal"));
    portal->answers = {{colorKey, portalDark}, {motionKey, wrapped(false)}};
    ASSERT_TRUE(waitFor([&] { return follower.heard.size() == 3; }));
    EXPECT_EQ(follower.heard.back(), (AppearanceWishes{dark, true}));

    portal.reset(); // before the next one takes its name
    portal = std::make_unique<FakeSettingsPortal>(QStringLiteral("second-portal"));
    portal->held = QStringList{QStringLiteral("Read")};
    ASSERT_TRUE(waitFor([&] { return portal->calls.size() == 2; }));
    portal.reset(); // with the questions open
    Follower::letThrough();
    EXPECT_EQ(follower.heard.size(), 3U);

    portal = std::make_unique<FakeSettingsPortal>(QStringLiteral("third-portal"));
    portal->answers = {{colorKey, portalLight}}; // this one cannot tell of animations
    ASSERT_TRUE(waitFor([&] { return follower.heard.size() == 4; }));
    EXPECT_EQ(follower.heard.back(), (AppearanceWishes{light, true}));
    portal->announce(colorGroup, colorKey, wrapped(1U, 1));
    ASSERT_TRUE(waitFor([&] { return follower.heard.size() == 5; })) << "it listens to an old one";
    EXPECT_EQ(follower.heard.back(), (AppearanceWishes{dark, true}));
}

TEST(DesktopAppearance, WithoutABusThereAreNoWishes) {
    Follower follower(QDBusConnection(QStringLiteral("no such connection")));
    EXPECT_EQ(follower.heard, Heard()) << "told from within the call";
    EXPECT_EQ(follower.hear(1), Heard{{}});
}

TEST(DesktopAppearance, AnAnswerToWhoIsGoneIsDropped) {
    FakeSettingsPortal portal;
    portal.held = QStringList{QStringLiteral("Read")};
    Follower gone;
    ASSERT_TRUE(waitFor([&] { return portal.calls.size() == 2; }));
    gone.appearance.reset();
    portal.release();
    portal.announce(colorGroup, colorKey, wrapped(1U, 1));
    EXPECT_EQ(Follower().hear(1), Heard{{}});
    EXPECT_EQ(gone.heard, Heard());
}

} // namespace
} // namespace burnwick
