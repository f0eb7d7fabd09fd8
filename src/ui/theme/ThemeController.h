// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DesktopAppearance.h"
#include "prefs/Theme.h"
#include "ui/theme/ThemeColors.h"

#include <QObject>

#include <memory>
#include <optional>

namespace burnwick {

class PreferencesManager;
class RepeatingTimer;
class Scheduler;

/// Sets the application's style and palette and keeps the palette current: Qt sends every widget a
/// QEvent::PaletteChange when the colours change. The scheme is the user's choice of a theme; with
/// Theme::system the desktop's preference; without a preference that of the platform's palette.
///
/// One per process, before the first window. Main thread only.
class ThemeController final : public QObject {
    Q_OBJECT

public:
    /// All of them must outlive this object.
    ThemeController(const PreferencesManager &preferences, DesktopAppearance &desktop, Scheduler &scheduler);
    ~ThemeController() override;

    /// Whether the desktop's user disabled animations.
    [[nodiscard]] bool reducedMotion() const { return m_wishes.reducedMotion; }
    /// False until the desktop has answered, or 300 ms have passed since the event loop started: a window
    /// shown earlier might change its colours immediately.
    [[nodiscard]] bool isSettled() const { return m_settled; }

Q_SIGNALS:
    /// Emitted once, unless isSettled() from the start.
    void settled();

private:
    void take(const AppearanceWishes &wishes);
    [[nodiscard]] ColorScheme currentScheme() const;
    void impose();
    void apply();
    void settle();

    const PreferencesManager &m_preferences;
    DesktopAppearance &m_desktop;
    const ColorScheme m_platformScheme;
    AppearanceWishes m_wishes;
    std::optional<ColorScheme> m_scheme;
    bool m_settled = false;
    std::unique_ptr<RepeatingTimer> m_deadline;
};

} // namespace burnwick
