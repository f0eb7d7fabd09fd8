// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "breakdown/BreakdownSums.h"

#include <memory>
#include <span>
#include <vector>

namespace burnwick {

/// Computes exact figures from the logs, reusing what the last calls computed. For one thread at a time.
class ExactCounting {
public:
    explicit ExactCounting(PriceTable prices)
        : m_prices(std::move(prices)) {}
    ExactCounting(const ExactCounting &) = delete;
    ExactCounting &operator=(const ExactCounting &) = delete;

    /// Returns the figures of the recent files; see exactSessionOf(). Each message of these files counts
    /// once.
    [[nodiscard]] SessionFigures session(std::span<const LogEntries> recent);
    /// Returns the sums of the history, in which each message counts once. The object must outlive them.
    [[nodiscard]] std::shared_ptr<const BreakdownSums> sums(const LogHistory &history,
                                                            const Calendar &calendar);

private:
    const PriceTable m_prices;
    MessageSelection m_recent;
    MessageSelection m_all;
    std::vector<std::shared_ptr<const SessionPart>> m_lastParts;
    std::shared_ptr<const BreakdownSums> m_lastSums; ///< null before the first call
};

} // namespace burnwick
