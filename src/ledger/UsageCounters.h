// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/UsageCell.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace burnwick {

/// Counts of use that never fall, in a SQLite file of their own beside the ledger: what was counted once
/// stays, also when the history shrinks, and one that comes back counts nothing twice. Several
/// processes may use it at once. All operations throw std::exception, and then have changed nothing, except
/// that a damaged file is moved aside and begun anew, with a line in the log. For one thread at a time.
class UsageCounters final {
public:
    /// Makes a missing folder, and the file, for the user alone.
    explicit UsageCounters(const std::filesystem::path &folder);
    ~UsageCounters();

    /// Raises the stored counts to those of the cells, and returns the sums over all that was ever counted,
    /// by project and model. Cells of messages before `singlySince` become cells of their days. Cells by
    /// project are counted apart from others.
    [[nodiscard]] std::vector<UsageCell> raise(const std::vector<UsageCell> &cells, bool byProject,
                                               std::chrono::sys_days singlySince);
    /// Returns 32 random bytes, the same in each call.
    [[nodiscard]] std::string key();

private:
    class File;

    template <typename Work>
    auto attempt(Work work);

    std::filesystem::path m_path;
    std::unique_ptr<File> m_file; ///< null before the first use and after damage
};

} // namespace burnwick
