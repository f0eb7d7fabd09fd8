// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

namespace burnwick {

/// Where the next line begins that may be a usage line, at or after `from` (which must be the beginning of a
/// line); npos when there is none left. Every line passed over certainly is none: it has no key "usage", or
/// never names "assistant", not even in escapes.
[[nodiscard]] std::size_t findCandidateLine(std::string_view block, std::size_t from, bool escapedLetters);

/// Whether the block has an escape that stands for a lower-case letter, such as \u0075 for u. Only then can a
/// key or value be spelled in a way that a plain search misses.
[[nodiscard]] bool hasEscapedLetters(std::string_view block);

} // namespace burnwick
