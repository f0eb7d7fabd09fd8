// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace burnwick {

/// The bytes that a descriptor had until a deadline.
struct TimedInput {
    std::string bytes;
    bool isComplete = false; ///< whether its end was reached
};

/// Reads up to `most` bytes of a file or pipe. Stops at its end, at the deadline and at an error.
[[nodiscard]] TimedInput readUntil(std::chrono::steady_clock::time_point deadline, int descriptor,
                                   std::size_t most);

} // namespace burnwick
