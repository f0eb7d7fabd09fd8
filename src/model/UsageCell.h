// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace burnwick {

/// The exact use of one model in one project on one day, or in one message of that day; each message counts
/// once. What is not told apart is empty.
struct UsageCell {
    enum Count : std::size_t {
        input,
        output,
        cacheWrite5m,
        cacheWrite1h,
        cacheRead,
        messages,
        unpriced,    ///< tokens of all kinds without a price
        picodollars, ///< 1e-12 US dollars; the other counts are tokens
    };

    std::optional<std::chrono::sys_days> day{}; ///< in UTC; null for messages without a time, too
    std::string project{};                      ///< the path of its folder
    std::string model{};                        ///< as logged
    std::uint64_t message = 0;                  ///< a hash of the message's identifier; 0 for several
    std::array<std::int64_t, picodollars + 1> counts{};

    /// Adds the counts; a sum that is too large is the largest number.
    void add(const std::array<std::int64_t, picodollars + 1> &others) noexcept {
        for (std::size_t i = 0; i < counts.size(); ++i) {
            if (__builtin_add_overflow(counts[i], others[i], &counts[i]))
                counts[i] = std::numeric_limits<std::int64_t>::max();
        }
    }
    bool operator==(const UsageCell &) const = default;
};

} // namespace burnwick
