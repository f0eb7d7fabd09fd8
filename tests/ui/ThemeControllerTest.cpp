// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/theme/ThemeController.h"

#include "platform/linux/defaults/JsonUserDefaults.h"
#include "prefs/PreferencesManager.h"
#include "prefs/SettingsFile.h"
#include "support/ManualScheduler.h"
#include "support/WaitFor.h"
#include "ui/theme/QuietStyle.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPainter>
#include <QToolTip>
#include <QWidget>

#include <optional>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using Colors = AppearanceWishes::Colors;

class FakeDesktop final : public DesktopAppearance {
public:
    void follow(Handler handler) override { m_handler = std::move(handler); }
    void impose(Colors colors) override { imposed.push_back(colors); }
    void send(Colors colors, bool reducedMotion = false) const { m_handler({colors, reducedMotion}); }

    std::vector<Colors> imposed;

private:
    Handler m_handler;
};

/// Paints itself and counts its palette changes.
class Card final : public QWidget {
public:
    int changes = 0;
    QColor shown;

protected:
    void paintEvent(QPaintEvent *) override {
        shown = colorsFor(*this).card;
        QPainter(this).fillRect(rect(), shown);
    }
    void changeEvent(QEvent *event) override {
        changes += event->type() == QEvent::PaletteChange;
        QWidget::changeEvent(event);
    }
};

class ThemeControllerTest : public testing::Test {
protected:
    /// On a platform with another style and other colours.
    ThemeControllerTest() {
        QApplication::setStyle(QStringLiteral("Windows"));
        QApplication::setPalette(paletteOf(ColorScheme::light));
        QToolTip::setPalette(QPalette(Qt::yellow));
    }
    ~ThemeControllerTest() override { QApplication::setPalette(QPalette()); }

    void start() { m_controller.emplace(m_preferences, m_desktop, m_scheduler); }
    [[nodiscard]] static ColorScheme shown() { return schemeOf(QApplication::palette()); }

    test::SettingsFile m_file;
    JsonUserDefaults m_defaults{m_file.path};
    PreferencesManager m_preferences{m_defaults};
    FakeDesktop m_desktop;
    test::ManualScheduler m_scheduler;
    std::optional<ThemeController> m_controller;
};

TEST_F(ThemeControllerTest, TheThemePrecedesTheDesktopsColoursAndThosePrecedeThePlatformsPalette) {
    for (const auto platform : {ColorScheme::dark, ColorScheme::light}) {
        const bool dark = platform == ColorScheme::dark;
        QApplication::setPalette(paletteOf(platform));
        m_preferences.setTheme(dark ? Theme::light : Theme::dark);
        m_controller.reset();
        m_desktop.imposed.clear();
        start();
        m_desktop.send(dark ? Colors::dark : Colors::light);
        EXPECT_NE(shown(), platform);
        m_preferences.setTheme(Theme::system);
        EXPECT_EQ(shown(), platform);
        EXPECT_EQ(m_desktop.imposed,
                  (std::vector{dark ? Colors::light : Colors::dark, Colors::noPreference}));
        m_desktop.send(dark ? Colors::light : Colors::dark);
        EXPECT_NE(shown(), platform);
        m_desktop.send(Colors::noPreference);
        EXPECT_EQ(shown(), platform);
    }
}

TEST_F(ThemeControllerTest, AVisibleWidgetChangesAtOnceAndOncePerChange) {
    start();
    EXPECT_NE(qobject_cast<QuietStyle *>(QApplication::style()), nullptr);
    Card card;
    card.show();
    ASSERT_TRUE(waitFor([&] { return card.shown == colorsOf(ColorScheme::light).card; }));
    card.changes = 0;

    m_preferences.setTheme(Theme::dark);
    EXPECT_EQ(card.changes, 1);
    EXPECT_EQ(QToolTip::palette().color(QPalette::ToolTipBase), colorsOf(ColorScheme::dark).card);
    EXPECT_TRUE(waitFor([&] { return card.shown == colorsOf(ColorScheme::dark).card; })) << "no repaint";
    m_preferences.setTheme(Theme::light);
    EXPECT_EQ(colorsFor(Card()).card, colorsOf(ColorScheme::light).card) << "of a widget never shown";

    card.changes = 0;
    m_preferences.setTheme(Theme::system);
    m_desktop.send(Colors::light);
    m_desktop.send(Colors::noPreference);
    EXPECT_EQ(card.changes, 0) << "for the same colours";
}

TEST_F(ThemeControllerTest, SettlesWithTheDesktopsAnswerOrAtTheDeadline) {
    const struct {
        const char *what;
        Theme theme;
        bool answers, settledAtOnce;
    } rows[] = {
        {"a desktop that answers", Theme::system, true, false},
        {"a desktop that does not", Theme::system, false, false},
        {"a theme that ignores the desktop", Theme::dark, true, true},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        m_preferences.setTheme(row.theme);
        start();
        EXPECT_EQ(m_controller->isSettled(), row.settledAtOnce);
        std::vector<ColorScheme> settledIn;
        QObject::connect(&*m_controller, &ThemeController::settled, [&] { settledIn.push_back(shown()); });
        EXPECT_TRUE(m_scheduler.intervals().empty()) << "the deadline must start with the event loop";
        QCoreApplication::processEvents();
        EXPECT_EQ(m_scheduler.intervals().size(), row.settledAtOnce ? 0U : 1U);
        if (row.answers)
            m_desktop.send(Colors::dark);
        else
            m_scheduler.fire(300ms);
        EXPECT_TRUE(m_controller->isSettled() && m_scheduler.intervals().empty());
        m_desktop.send(Colors::light);
        const ColorScheme expected = row.answers ? ColorScheme::dark : ColorScheme::light;
        EXPECT_EQ(settledIn, std::vector<ColorScheme>(row.settledAtOnce ? 0 : 1, expected));
    }
}

TEST_F(ThemeControllerTest, KeepsReducedMotionAndADestroyedControllerIgnoresTheDesktop) {
    start();
    m_desktop.send(Colors::light, true);
    EXPECT_TRUE(m_controller->reducedMotion());
    m_controller.reset();
    m_desktop.send(Colors::dark);
    EXPECT_EQ(shown(), ColorScheme::light);
}

} // namespace
} // namespace burnwick
