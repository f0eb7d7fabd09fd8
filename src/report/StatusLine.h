// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Clock.h"
#include "report/StatusLineTitle.h"

#include <string>
#include <vector>

namespace burnwick {

/// Answers as the command of Claude Code's status line, which gets JSON on standard input: prints the status
/// title in the styles of a terminal, or replaces this process by the command, which gets the same input. A
/// background process then keeps the limits in the input.
///
/// Prints an empty line if standard input is a terminal, malformed, larger than 1 MiB or late, and if the
/// command cannot be executed. Prints nothing else, and returns 0.
[[nodiscard]] int runStatusLine(const TitleSources &sources, const std::vector<std::string> &command,
                                const Clock &clock);

} // namespace burnwick
