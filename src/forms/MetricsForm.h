// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Limit.h"
#include "model/UsageCell.h"

#include <string>
#include <string_view>
#include <vector>

namespace burnwick {

/// Values for a monitoring system.
struct Metrics {
    std::vector<UsageCell> use{}; ///< of a model and a project in one cell or several; a project is any label
    bool areCounters = false;     ///< whether the use never falls
    std::vector<Limit> limits{};
    double burnRateTokensPerMin = 0;
};

/// Returns the values in Prometheus' text format 0.0.4, without times, with the last line feed. Text that is
/// no UTF-8 is replaced.
[[nodiscard]] std::string metricsForm(const Metrics &metrics, std::string_view version);

} // namespace burnwick
