// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/CheckedMath.h"

#include <cstdint>

namespace burnwick {

/// Token counts summed over a list of log entries.
struct SessionTokens {
    std::int64_t input = 0;
    std::int64_t output = 0;
    std::int64_t cacheCreation = 0;
    std::int64_t cacheRead = 0;

    /// All four kinds together; ends the program when the sum overflows.
    [[nodiscard]] std::int64_t total() const noexcept {
        return addTokens(addTokens(addTokens(input, output), cacheCreation), cacheRead);
    }

    bool operator==(const SessionTokens &) const = default;
};

} // namespace burnwick
