// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace burnwick {

/// Ends the program at once with one line on standard error and exit code 70: a wrapped token sum would be
/// shown as a plausible figure, which is worse than none.
[[noreturn]] void stopOnTokenOverflow() noexcept;

/// a + b; ends the program when the sum does not fit into 64 bits.
[[nodiscard]] inline std::int64_t addTokens(std::int64_t a, std::int64_t b) noexcept {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum))
        stopOnTokenOverflow();
    return sum;
}

} // namespace burnwick
