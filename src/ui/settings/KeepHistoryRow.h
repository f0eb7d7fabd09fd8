// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Snapshot.h"
#include "ui/settings/SettingsCard.h"

#include <functional>

namespace burnwick {

class PreferencesManager;
class Switch;

/// The switch for the preference to keep the history. Before it goes off, all that is kept is forgotten,
/// which the user has to confirm if there is something.
class KeepHistoryRow final : public SettingsRow {
    Q_OBJECT

public:
    struct Services {
        std::function<int()> daysUntilCleanup;
        std::function<const UsageFigures &()> usage; ///< returns the current figures
        std::function<bool()> forget;                ///< forgets all that is kept; returns false on failure
    };

    /// The preferences must outlive the row.
    KeepHistoryRow(Services services, PreferencesManager &preferences, std::function<bool()> reducedMotion);

private:
    void follow(bool on);
    void ask(const UsageFigures &usage);
    void forget();

    Services m_services;
    PreferencesManager &m_preferences;
    Switch *m_switch;
};

} // namespace burnwick
