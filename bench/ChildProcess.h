// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace burnwick::bench {

/// What a whole process took, from its start to its end.
struct ProcessCost {
    double seconds = 0;
    std::uint64_t peakBytes = 0; ///< resident memory; never less than this process's own peak at the start
    std::uint64_t readBytes = 0; ///< by its read calls
};

/// Runs a program to its end, in the given environment and with its output in a file. Throws
/// std::runtime_error when it cannot be started or fails.
ProcessCost runProcess(const std::vector<std::string> &command, const std::vector<std::string> &environment,
                       const std::string &output = "/dev/null");

/// Returns the number after a key of a process's file below /proc. Throws std::runtime_error without one.
std::uint64_t numberIn(const std::string &file, const std::string &key);

} // namespace burnwick::bench
