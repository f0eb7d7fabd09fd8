// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/LoginItem.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <filesystem>
#include <string>

namespace burnwick {

/// Returns the program's name for an autostart entry: its file name when the file is found by it in those
/// folders, so that the entry survives a move of the installation, otherwise the path.
[[nodiscard]] QString programNameForEntry(const QString &path, const QStringList &searchedFolders);

/// The entry burnwick.desktop in a folder of XDG autostart entries. Sway and other compositors without a
/// session manager do not read it.
///
/// An entry is removed only when it is unchanged since Burnwick wrote it. One that the user or the desktop's
/// settings wrote or changed is switched on and off by its keys, and keeps all other lines. A link of that
/// name (often to /dev/null, to keep the program from starting) is neither followed nor replaced.
class AutostartLoginItem final : public LoginItem {
public:
    /// `program` is a path or a name, as programNameForEntry() returns it. The folder need not exist.
    AutostartLoginItem(const std::filesystem::path &folder, QString program);

    [[nodiscard]] LoginItemState state() const override;
    [[nodiscard]] std::optional<LoginItemFailure> registerItem() override;
    [[nodiscard]] std::optional<LoginItemFailure> unregisterItem() override;
    [[nodiscard]] std::optional<LoginItemFailure> restoreChoice(bool on) override;

private:
    /// Returns the folder's entry; absent when it cannot be read, and empty when it is missing.
    [[nodiscard]] std::optional<std::string> entry() const;
    [[nodiscard]] LoginItemFailure failure(const std::string &reason) const;
    [[nodiscard]] std::optional<LoginItemFailure> write(const std::string &entry) const;

    std::filesystem::path m_file;
    QString m_program;
};

} // namespace burnwick
