// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/settings/SettingsCard.h"

#include <QStringList>

#include <functional>
#include <optional>

namespace burnwick {

class PreferencesManager;

/// The folders whose logs are read: Claude Code's own, and those of the preference, which the user can add
/// and remove. Shows beside a folder of the preference why it cannot be read.
class LogFoldersCard final : public SettingsCard {
    Q_OBJECT

public:
    struct Services {
        std::function<QStringList()> usualFolders; ///< returns those that exist, as text for the user
        /// Returns why a folder of the preference cannot be read, as text for the user; empty if it can be.
        std::function<QString(const QString &folder)> problemOf;
    };

    /// The preferences must outlive the card.
    LogFoldersCard(Services services, PreferencesManager &preferences);

    /// Looks for the folders again.
    void check();

private:
    struct Folders {
        QStringList usual;
        QStringList chosen;
        QStringList problems; ///< of each chosen one

        bool operator==(const Folders &) const = default;
    };

    [[nodiscard]] SettingsRow *makeChosenRow(const QString &folder, const QString &problem);
    [[nodiscard]] SettingsRow *makeAddRow();
    void chooseFolder();

    Services m_services;
    PreferencesManager &m_preferences;
    std::optional<Folders> m_shown; ///< null before the first check
};

} // namespace burnwick
