// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/LoginItem.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <filesystem>
#include <string>

namespace burnwick {

/// How an autostart entry names the program: its file name alone when those folders hold this very file, so
/// that the entry survives a move of the installation, otherwise the path as it is.
[[nodiscard]] QString programNameForEntry(const QString &path, const QStringList &searchedFolders);

/// The entry burnwick.desktop in a folder of XDG autostart entries. Sway and other compositors without a
/// session manager do not read these by themselves.
///
/// An entry is removed only as Burnwick wrote it. One that the user wrote or changed, or the desktop's
/// settings, is switched on and off by its own keys and keeps all the rest. A link of that name (often to
/// /dev/null, to keep the program off) is neither followed nor replaced.
class AutostartLoginItem final : public LoginItem {
public:
    /// `program` is a path or a name, as programNameForEntry() gives it. The folder need not exist.
    AutostartLoginItem(const std::filesystem::path &folder, QString program);

    [[nodiscard]] bool isRegistered() const override;
    [[nodiscard]] std::optional<LoginItemFailure> registerItem() override;
    [[nodiscard]] std::optional<LoginItemFailure> unregisterItem() override;
    [[nodiscard]] std::optional<LoginItemFailure> restoreChoice(bool on) override;

private:
    /// What the folder has; absent when it cannot be read, and empty where there is no entry.
    [[nodiscard]] std::optional<std::string> entry() const;
    [[nodiscard]] LoginItemFailure failure(const std::string &reason) const;
    [[nodiscard]] std::optional<LoginItemFailure> write(const std::string &entry) const;

    std::filesystem::path m_file;
    QString m_program;
};

} // namespace burnwick
