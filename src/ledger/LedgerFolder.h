// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ledger/Patience.h"
#include "logs/FileStatus.h"

#include <chrono>
#include <exception>
#include <filesystem>
#include <memory>
#include <optional>

namespace burnwick {

class LedgerDatabase;

/// The folder of the ledger: the file, its backup, and damaged ones that were moved aside. For one thread at
/// a time; several processes may use the folder at once.
class LedgerFolder final {
public:
    /// Does not access the folder.
    explicit LedgerFolder(const std::filesystem::path &folder, Patience patience = Patience::usual);

    [[nodiscard]] const std::filesystem::path &file() const { return m_file; }

    /// Whether neither the file nor a backup exists.
    [[nodiscard]] bool isUnused() const;
    /// Opens the file. A missing file is made first, from the backup if that is sound, otherwise empty; a
    /// missing folder, for the user alone. With brief patience it restores no backup, but throws. Throws
    /// SQLite::Exception, DamagedLedger and ForeignLedger.
    [[nodiscard]] std::unique_ptr<LedgerDatabase> open();
    /// Returns whether the file at the path is not the one that was opened, or no file was opened.
    [[nodiscard]] bool isOther() const;
    /// Reads the whole file; returns whether no damage was found.
    [[nodiscard]] bool isSound() const;
    /// Moves the file that was opened aside. Returns false if it is still in its place.
    [[nodiscard]] bool setAside() const;

    /// Replaces the backup, unless another process is doing that. Throws what the database throws, and
    /// std::system_error.
    void backUp(LedgerDatabase &database);
    /// The same if the backup is a day old. Does nothing within an hour after the last call.
    void backUpDaily(LedgerDatabase &database);
    /// Removes all other copies of the ledger's file.
    void removeCopies() const;

private:
    [[nodiscard]] bool isMissing() const;
    void restore() const;

    std::filesystem::path m_file;
    std::filesystem::path m_backup;
    Patience m_patience;
    FileStatus m_opened; ///< when it was opened
    std::optional<std::chrono::steady_clock::time_point> m_backUpTried;
};

/// Returns whether the failure is due to the file's contents.
[[nodiscard]] bool isDamage(const std::exception &error);

} // namespace burnwick
