// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Snapshot.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The rows of tables of projects, models and days. Their tokens are those of the figures' choice; their
/// prices are always exact.
namespace burnwick {

struct ProjectRow {
    std::string path; ///< empty for messages without a folder
    std::int64_t tokens = 0;
    std::int64_t sessions = 0;
    std::optional<Instant> lastUsed{};
    PricedTokens price{};

    bool operator==(const ProjectRow &) const = default;
};

struct ModelRow {
    std::string name; ///< empty for messages without a model
    std::int64_t input = 0;
    std::int64_t output = 0;
    /// Null as logged, because those figures have these counts for all models together only.
    std::optional<std::int64_t> cacheWrite5m{}, cacheWrite1h{}, cacheRead{}, webSearches{};
    std::optional<PricedTokens> price{}; ///< null if none of its lines is a message

    bool operator==(const ModelRow &) const = default;
};

struct DayRow {
    LocalDay day;
    std::int64_t tokens = 0;
    PricedTokens price{};

    bool operator==(const DayRow &) const = default;
};

/// Returns the projects, the most expensive first.
[[nodiscard]] std::vector<ProjectRow> projectRows(const UsageFigures &usage);
/// Returns the models, the most expensive first.
[[nodiscard]] std::vector<ModelRow> modelRows(const UsageFigures &usage);
/// Returns the days with any use, in their order.
[[nodiscard]] std::vector<DayRow> dayRows(const UsageFigures &usage);

} // namespace burnwick
