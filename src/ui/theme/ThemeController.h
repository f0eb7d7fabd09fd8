// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DesktopAppearance.h"
#include "prefs/Theme.h"
#include "ui/theme/ColorScheme.h"

#include <QObject>

#include <optional>

namespace burnwick {

class PreferencesManager;

/// What to draw in: the user's choice of a theme; for `system` what the desktop wishes; where it has no
/// preference, what the platform's own palette is.
[[nodiscard]] ColorScheme schemeFor(Theme theme, AppearanceWishes::Colors desktop, ColorScheme platform);

/// Gives the application its style and its palette and keeps the palette current: every widget gets a
/// QEvent::PaletteChange from Qt when the colours change. The status item brings colours of its own.
///
/// One per process, before the first window, while the application's palette is the platform's still. Main
/// thread only.
class ThemeController final : public QObject {
    Q_OBJECT

public:
    /// Both must outlive this object.
    ThemeController(const PreferencesManager &preferences, DesktopAppearance &desktop);

    [[nodiscard]] ColorScheme scheme() const { return *m_scheme; }
    /// Whether the desktop's user wants nothing to move.
    [[nodiscard]] bool reducedMotion() const { return m_wishes.reducedMotion; }
    /// Whether a window may be shown without changing its colours right away; see settled().
    [[nodiscard]] bool isSettled() const { return m_settled; }

Q_SIGNALS:
    /// The application has other colours, and its widgets know.
    void changed(burnwick::ColorScheme scheme);
    void reducedMotionChanged(bool reduced);
    /// Once, unless it is settled from the start: the desktop has told its colours, or has had its time to.
    void settled();

private:
    void take(const AppearanceWishes &wishes);
    void apply();
    void settle();

    const PreferencesManager &m_preferences;
    const ColorScheme m_platformScheme;
    AppearanceWishes m_wishes;
    std::optional<ColorScheme> m_scheme;
    bool m_settled = false;
};

} // namespace burnwick
