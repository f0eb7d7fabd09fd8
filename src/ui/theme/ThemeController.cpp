// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/theme/ThemeController.h"

#include "async/Scheduler.h"
#include "prefs/PreferencesManager.h"
#include "ui/theme/QuietStyle.h"

#include <QApplication>
#include <QPointer>
#include <QToolTip>

#include <chrono>
#include <utility>

namespace burnwick {

ThemeController::ThemeController(const PreferencesManager &preferences, DesktopAppearance &desktop,
                                 Scheduler &scheduler)
    : m_preferences(preferences)
    , m_desktop(desktop)
    , m_platformScheme(schemeOf(QApplication::palette()))
    , m_settled(preferences.theme() != Theme::system) {
    QApplication::setStyle(new QuietStyle); // which becomes its owner
    impose();
    apply();
    connect(&preferences, &PreferencesManager::themeChanged, this, [this] {
        impose();
        apply();
    });
    // The event loop delivers the desktop's answer, and starts after the first reading of the logs, which may
    // take longer than the deadline.
    const auto startDeadline = [this, &scheduler] {
        constexpr std::chrono::milliseconds settlingTime{300}; // an answer takes a few milliseconds
        if (!m_settled)
            m_deadline = scheduler.repeat(settlingTime, [this] { settle(); });
    };
    QMetaObject::invokeMethod(this, startDeadline, Qt::QueuedConnection);
    desktop.follow([self = QPointer(this)](const AppearanceWishes &wishes) {
        if (self)
            self->take(wishes);
    });
}

ThemeController::~ThemeController() = default;

void ThemeController::take(const AppearanceWishes &wishes) {
    m_wishes = wishes;
    apply();
    settle();
}

ColorScheme ThemeController::currentScheme() const {
    using Colors = AppearanceWishes::Colors;
    const Theme theme = m_preferences.theme();
    const bool follows = theme == Theme::system;
    if (theme == Theme::light || (follows && m_wishes.colors == Colors::light))
        return ColorScheme::light;
    if (theme == Theme::dark || (follows && m_wishes.colors == Colors::dark))
        return ColorScheme::dark;
    return m_platformScheme;
}

void ThemeController::impose() {
    using Colors = AppearanceWishes::Colors;
    const Theme theme = m_preferences.theme();
    m_desktop.impose(theme == Theme::light  ? Colors::light
                     : theme == Theme::dark ? Colors::dark
                                            : Colors::noPreference);
}

void ThemeController::apply() {
    const ColorScheme scheme = currentScheme();
    if (m_scheme == scheme)
        return;
    m_scheme = scheme;
    const QPalette palette = paletteOf(scheme);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
    // Qt posts the change to the windows; without this they would change one turn of the event loop later.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::ApplicationPaletteChange);
}

void ThemeController::settle() {
    m_deadline.reset();
    if (std::exchange(m_settled, true))
        return;
    Q_EMIT settled();
}

} // namespace burnwick
