// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace burnwick {

/// Whether the line may be a usage line. A line that may not certainly is none: it has no key "usage", or
/// never names "assistant", not even in escapes.
[[nodiscard]] bool mayBeUsageLine(std::string_view line);

} // namespace burnwick
