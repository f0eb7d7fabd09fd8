// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

/// Searches over whole log files. Bytes are compared in chunks without a branch inside, which the compiler
/// turns into vector instructions: several times as fast as the standard searches.
///
/// `matches` returns nonzero for a match; it reads `width` bytes from the address it is given. GCC vectorizes
/// larger conditions only if they are sums of integers, as isByte() returns, not of truth values.
namespace burnwick {

inline constexpr std::size_t searchChunk = 64;

[[nodiscard]] inline int isByte(char byte, char wanted) {
    return byte == wanted ? 1 : 0;
}
[[nodiscard]] inline int notByte(char byte, char unwanted) {
    return byte != unwanted ? 1 : 0;
}

template <typename Matches>
[[nodiscard]] bool anyInChunk(const char *chunk, Matches matches) {
    unsigned char any = 0;
    for (std::size_t i = 0; i < searchChunk; ++i)
        any |= static_cast<unsigned char>(matches(chunk + i));
    return any != 0;
}

/// Calls visit(index) for each match in ascending order until it returns false; returns false then.
template <std::size_t width, typename Matches, typename Visit>
[[nodiscard]] bool visitMatches(std::string_view text, Matches matches, Visit visit) {
    const auto visitRange = [&](std::size_t begin, std::size_t end) {
        for (std::size_t at = begin; at < end; ++at) {
            if (matches(text.data() + at) != 0 && !visit(at))
                return false;
        }
        return true;
    };
    std::size_t at = 0;
    for (; at + searchChunk + width <= text.size(); at += searchChunk) {
        if (anyInChunk(text.data() + at, matches) && !visitRange(at, at + searchChunk))
            return false;
    }
    return visitRange(at, text.size() < width ? 0 : text.size() - width + 1);
}

/// The same in descending order.
template <std::size_t width, typename Matches, typename Visit>
[[nodiscard]] bool visitMatchesFromEnd(std::string_view text, Matches matches, Visit visit) {
    const auto visitRange = [&](std::size_t begin, std::size_t end) {
        for (std::size_t at = end; at > begin; --at) {
            if (matches(text.data() + at - 1) != 0 && !visit(at - 1))
                return false;
        }
        return true;
    };
    std::size_t end = text.size() < width ? 0 : text.size() - width + 1;
    for (; end >= searchChunk; end -= searchChunk) {
        if (anyInChunk(text.data() + end - searchChunk, matches) && !visitRange(end - searchChunk, end))
            return false;
    }
    return visitRange(0, end);
}

} // namespace burnwick
