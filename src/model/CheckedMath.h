// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace burnwick {

/// Prints one line to standard error and ends the process with exit code 70. A wrapped token sum would look
/// plausible.
[[noreturn]] void stopOnTokenOverflow() noexcept;

/// Returns a + b; ends the process when the sum does not fit into 64 bits.
[[nodiscard]] inline std::int64_t addTokens(std::int64_t a, std::int64_t b) noexcept {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum))
        stopOnTokenOverflow();
    return sum;
}

} // namespace burnwick
