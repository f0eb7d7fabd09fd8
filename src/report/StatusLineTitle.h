// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Clock.h"
#include "model/FigureChoice.h"
#include "model/SessionTokens.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <vector>

namespace burnwick {

/// The session's figures in the status title.
struct TitleFigures {
    SessionTokens tokens;
    std::optional<double> cost; ///< in dollars; null if the price list has none

    bool operator==(const TitleFigures &) const = default;
};

/// Where the figures come from.
struct TitleSources {
    std::vector<std::filesystem::path> logFolders; ///< at least one
    std::filesystem::path ledgerFolder;
    bool keepsHistory = false;
    FigureChoice figures = FigureChoice::asLogged;
    std::filesystem::path cacheFile; ///< of that choice; written only after the usual deadline
};

/// How long to wait for the figures.
struct TitleDeadlines {
    std::chrono::steady_clock::time_point usual; ///< if there are stored figures
    std::chrono::steady_clock::time_point last;
};

/// Returns the figures of the recent logs, which a background process reads. If that is late, returns the
/// figures that the last late process stored, at most an hour ago; null if no figures exist at the last
/// deadline. A slow process also stores what it reads in the ledger, so that the next one is quick. One
/// process reads at a time; others give up at the last deadline.
[[nodiscard]] std::optional<TitleFigures> titleFigures(const TitleSources &sources, const Clock &clock,
                                                       const TitleDeadlines &deadlines);

} // namespace burnwick
