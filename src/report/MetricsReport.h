// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Snapshot.h"
#include "model/UsageCell.h"
#include "report/ReportOptions.h"

#include <filesystem>
#include <string>
#include <vector>

namespace burnwick {

/// Returns the day from which on the cells of metrics are those of single messages.
[[nodiscard]] std::chrono::sys_days singlySince(Instant now);

/// Returns the metrics of the snapshot and of the cells, which are by project if the options name projects.
/// With counters, the use is what the counters in the folder become. Throws std::runtime_error if they, or
/// the key for names of projects, cannot be read or stored.
[[nodiscard]] std::string metricsText(const ReportOptions &options, const Snapshot &snapshot,
                                      std::vector<UsageCell> cells, bool areCounters,
                                      const std::filesystem::path &folder);

/// While it exists, no other process is between reading the counters and writing a metrics file in that
/// folder: an earlier text must not replace a later one.
class MetricsFileTurn {
public:
    /// Waits for the others. Does nothing if the folder cannot be opened.
    explicit MetricsFileTurn(const QString &file);
    ~MetricsFileTurn();
    MetricsFileTurn(const MetricsFileTurn &) = delete;
    MetricsFileTurn &operator=(const MetricsFileTurn &) = delete;

private:
    int m_folder;
};

/// Replaces the file as a whole; other users may read it, as far as the process's mask lets them. Throws
/// std::runtime_error, and then leaves it as it was.
void writeMetricsFile(const QString &file, const std::string &text);

} // namespace burnwick
