// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/theme/ThemeController.h"

#include "prefs/PreferencesManager.h"
#include "prefs/SettingsFile.h"
#include "prefs/UserDefaults.h"
#include "support/WaitFor.h"
#include "ui/theme/QuietStyle.h"
#include "ui/theme/ThemeColors.h"
#include "ui/theme/ThemePalette.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPainter>
#include <QSignalSpy>
#include <QTimer>
#include <QToolTip>
#include <QWidget>

#include <optional>
#include <thread>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using Colors = AppearanceWishes::Colors;

/// A desktop whose wishes the test sends.
class FakeDesktop final : public DesktopAppearance {
public:
    void follow(Handler handler) override { m_handler = std::move(handler); }
    void tell(Colors colors, bool reducedMotion = false) const { m_handler({colors, reducedMotion}); }

private:
    Handler m_handler;
};

/// Draws itself, and counts how often its palette changes.
class Card final : public QWidget {
public:
    int changes = 0;

    [[nodiscard]] QColor shownColor() const { return m_shown; }

protected:
    void paintEvent(QPaintEvent *) override {
        m_shown = colorsFor(*this).card;
        QPainter(this).fillRect(rect(), m_shown);
    }
    void changeEvent(QEvent *event) override {
        changes += event->type() == QEvent::PaletteChange;
        QWidget::changeEvent(event);
    }

private:
    QColor m_shown;
};

class ThemeControllerTest : public testing::Test {
protected:
    /// On a platform with a style and colours of its own.
    ThemeControllerTest() {
        QApplication::setStyle(QStringLiteral("Windows"));
        QApplication::setPalette(paletteOf(ColorScheme::light));
        QToolTip::setPalette(QPalette(Qt::yellow));
    }
    ~ThemeControllerTest() override { QApplication::setPalette(QPalette()); }

    void start() { m_controller.emplace(m_preferences, m_desktop); }
    [[nodiscard]] static ColorScheme shown() { return schemeOf(QApplication::palette()); }

    test::SettingsFile m_file;
    UserDefaults m_defaults{m_file.path};
    PreferencesManager m_preferences{m_defaults};
    FakeDesktop m_desktop;
    std::optional<ThemeController> m_controller;
};

TEST_F(ThemeControllerTest, ThePlatformsPaletteIsRememberedUnderOurs) {
    for (const auto platform : {ColorScheme::dark, ColorScheme::light}) {
        const auto other = platform == ColorScheme::dark ? Theme::light : Theme::dark;
        QApplication::setPalette(paletteOf(platform));
        m_preferences.setTheme(other);
        start();
        EXPECT_NE(shown(), platform);
        m_preferences.setTheme(Theme::system);
        EXPECT_EQ(shown(), platform);
        m_desktop.tell(other == Theme::dark ? Colors::dark : Colors::light);
        EXPECT_NE(shown(), platform);
        m_desktop.tell(Colors::noPreference);
        EXPECT_EQ(shown(), platform);
    }
}

TEST_F(ThemeControllerTest, AChangeReachesWhatIsOnTheScreenAtOnceAndOnce) {
    start();
    EXPECT_NE(qobject_cast<QuietStyle *>(QApplication::style()), nullptr);
    QWidget window;
    Card *card = new Card;
    card->setParent(&window);
    card->resize(20, 20);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    ASSERT_EQ(card->grab().toImage().pixelColor(10, 10), colorsOf(ColorScheme::light).card);
    card->changes = 0;
    const QSignalSpy changed(&*m_controller, &ThemeController::changed);

    m_preferences.setTheme(Theme::dark);
    EXPECT_EQ(card->changes, 1);
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(m_controller->scheme(), ColorScheme::dark);
    EXPECT_EQ(QToolTip::palette().color(QPalette::ToolTipBase), colorsOf(ColorScheme::dark).card);
    // It repaints by itself: nobody asks it to.
    EXPECT_TRUE(waitFor([&] { return card->shownColor() == colorsOf(ColorScheme::dark).card; }));
    // And is right before, for whoever draws it off the screen.
    m_preferences.setTheme(Theme::light);
    EXPECT_EQ(colorsFor(Card()).card, colorsOf(ColorScheme::light).card);
    EXPECT_EQ(card->grab().toImage().pixelColor(10, 10), colorsOf(ColorScheme::light).card);

    // What leads to the same colours changes nothing.
    card->changes = 0;
    m_preferences.setTheme(Theme::system);
    m_desktop.tell(Colors::light);
    m_desktop.tell(Colors::noPreference);
    EXPECT_EQ(card->changes, 0);
    EXPECT_EQ(changed.size(), 2);
}

TEST_F(ThemeControllerTest, TheDesktopsColoursWaitUntilTheThemeFollowsIt) {
    m_preferences.setTheme(Theme::light);
    start();
    m_desktop.tell(Colors::dark);
    EXPECT_EQ(shown(), ColorScheme::light);
    m_preferences.setTheme(Theme::system);
    EXPECT_EQ(shown(), ColorScheme::dark);
}

TEST_F(ThemeControllerTest, AWindowWaitsForTheDesktopButNotForLong) {
    const struct {
        const char *what;
        Theme theme;
        bool answers, settledAtOnce;
    } rows[] = {
        {"a desktop that answers", Theme::system, true, false},
        {"a desktop that does not", Theme::system, false, false},
        {"nothing to ask for", Theme::dark, true, true},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        m_preferences.setTheme(row.theme);
        start();
        EXPECT_EQ(m_controller->isSettled(), row.settledAtOnce);
        ColorScheme then = m_controller->scheme();
        const QSignalSpy settled(&*m_controller, &ThemeController::settled);
        QObject::connect(&*m_controller, &ThemeController::settled, [&then] { then = shown(); });
        if (row.answers) {
            m_desktop.tell(Colors::dark);
            EXPECT_EQ(then, ColorScheme::dark) << "settled before the colours are";
        } else {
            EXPECT_FALSE(m_controller->isSettled());
            EXPECT_TRUE(waitFor([&] { return m_controller->isSettled(); }));
        }
        m_desktop.tell(Colors::light);
        EXPECT_EQ(settled.size(), row.settledAtOnce ? 0 : 1);
    }
}

TEST_F(ThemeControllerTest, TheTimeBeforeTheEventLoopRunsIsNotTheDesktops) {
    start();
    // It needs a turn of the event loop and then a little time.
    QTimer::singleShot(0, [this] { QTimer::singleShot(20ms, [this] { m_desktop.tell(Colors::dark); }); });
    std::this_thread::sleep_for(400ms); // as the first load of many logs would
    ASSERT_TRUE(waitFor([this] { return m_controller->isSettled(); }));
    EXPECT_EQ(shown(), ColorScheme::dark) << "settled without the answer";
}

TEST_F(ThemeControllerTest, ReducedMotionIsToldApartFromTheColours) {
    start();
    const QSignalSpy motion(&*m_controller, &ThemeController::reducedMotionChanged);
    m_desktop.tell(Colors::light);
    EXPECT_EQ(motion.size(), 0);
    m_desktop.tell(Colors::light, true);
    EXPECT_EQ(motion.size(), 1);
    EXPECT_TRUE(m_controller->reducedMotion());

    m_controller.reset();
    m_desktop.tell(Colors::dark); // to nobody
    EXPECT_EQ(shown(), ColorScheme::light);
}

} // namespace
} // namespace burnwick
