// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Snapshot.h"
#include "ui/settings/SettingsCard.h"

#include <functional>

namespace burnwick {

class PreferencesManager;
class Switch;

/// The switch for the preference to keep the history. Switching it off removes the kept history; an alert
/// asks the user first if there is any.
class KeepHistoryRow final : public SettingsRow {
    Q_OBJECT

public:
    struct Services {
        std::function<int()> daysUntilCleanup;
        std::function<const UsageFigures &()> usage; ///< returns the current figures
        /// See Ledger::forgetKeptHistory().
        std::function<bool(bool withLines)> forget;
    };

    /// The preferences must outlive the row.
    KeepHistoryRow(Services services, PreferencesManager &preferences, std::function<bool()> reducedMotion);

private:
    void follow(bool on);
    void ask(const UsageFigures &usage);
    void forget(bool withLines);

    Services m_services;
    PreferencesManager &m_preferences;
    Switch *m_switch;
};

} // namespace burnwick
