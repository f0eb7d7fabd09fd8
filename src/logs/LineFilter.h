// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace burnwick {

/// Returns false only for lines that are certainly not usage lines: they have no key "usage", or do not
/// contain "assistant", not even in escapes.
[[nodiscard]] bool mayBeUsageLine(std::string_view line);

} // namespace burnwick
