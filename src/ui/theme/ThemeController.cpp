// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/theme/ThemeController.h"

#include "prefs/PreferencesManager.h"
#include "ui/theme/QuietStyle.h"
#include "ui/theme/ThemeColors.h"
#include "ui/theme/ThemePalette.h"

#include <QApplication>
#include <QPointer>
#include <QTimer>
#include <QToolTip>

#include <chrono>

namespace burnwick {

namespace {

/// How long the first window may wait for the desktop; an answer takes a few milliseconds.
constexpr std::chrono::milliseconds settlingTime{300};

} // namespace

ColorScheme schemeFor(Theme theme, AppearanceWishes::Colors desktop, ColorScheme platform) {
    using Colors = AppearanceWishes::Colors;
    if (theme == Theme::light || (theme == Theme::system && desktop == Colors::light))
        return ColorScheme::light;
    if (theme == Theme::dark || (theme == Theme::system && desktop == Colors::dark))
        return ColorScheme::dark;
    return platform;
}

ThemeController::ThemeController(const PreferencesManager &preferences, DesktopAppearance &desktop)
    : m_preferences(preferences)
    , m_platformScheme(schemeOf(QApplication::palette()))
    , m_settled(preferences.theme() != Theme::system) {
    QApplication::setStyle(new QuietStyle); // which becomes its owner
    apply();
    connect(&preferences, &PreferencesManager::themeChanged, this, &ThemeController::apply);
    // Its time begins with the event loop, before which no answer is heard: a first load may take longer.
    if (!m_settled)
        QTimer::singleShot(0, this,
                           [this] { QTimer::singleShot(settlingTime, this, &ThemeController::settle); });
    desktop.follow([self = QPointer(this)](const AppearanceWishes &wishes) {
        if (self)
            self->take(wishes);
    });
}

void ThemeController::take(const AppearanceWishes &wishes) {
    const bool motionChanged = wishes.reducedMotion != m_wishes.reducedMotion;
    m_wishes = wishes;
    apply();
    settle();
    if (motionChanged)
        Q_EMIT reducedMotionChanged(wishes.reducedMotion);
}

void ThemeController::apply() {
    const ColorScheme scheme = schemeFor(m_preferences.theme(), m_wishes.colors, m_platformScheme);
    if (m_scheme == scheme)
        return;
    m_scheme = scheme;
    const QPalette palette = paletteOf(scheme);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
    // The news is posted to the windows; without this they would have it one turn of the event loop later.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::ApplicationPaletteChange);
    Q_EMIT changed(scheme);
}

void ThemeController::settle() {
    if (m_settled)
        return;
    m_settled = true;
    Q_EMIT settled();
}

} // namespace burnwick
