// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

namespace burnwick {

/// How to set up the status line.
struct StatusLineSetup {
    std::string advice;  ///< what to do with the snippet: one line without a line feed
    std::string snippet; ///< the member "statusLine" for Claude Code's settings, as an object in JSON
};

/// Returns the setup for the settings file, which may be missing. A command in it is wrapped, unless it is
/// the status line of this program already; other members of its status line stay. `program` is the path of
/// this program, or its name. Throws std::runtime_error if the file is malformed or cannot be read.
[[nodiscard]] StatusLineSetup statusLineSetup(const std::filesystem::path &settings,
                                              const std::string &program);

} // namespace burnwick
