// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

/// Searches over whole log files. Bytes are compared chunk by chunk without a branch inside, which the
/// compiler turns into vector instructions: several times as fast as the standard searches.
namespace burnwick {

inline constexpr std::size_t searchChunk = 64;

/// Where `matchesAt` first holds. It is given an address and looks at `width` bytes there.
template <std::size_t width, typename Match>
[[nodiscard]] std::size_t findFirst(std::string_view text, Match matchesAt) {
    std::size_t at = 0;
    for (; at + searchChunk + width <= text.size(); at += searchChunk) {
        const char *chunk = text.data() + at;
        unsigned char any = 0;
        for (std::size_t i = 0; i < searchChunk; ++i)
            any |= static_cast<unsigned char>(matchesAt(chunk + i));
        if (any != 0)
            break;
    }
    for (; at + width <= text.size(); ++at) {
        if (matchesAt(text.data() + at))
            return at;
    }
    return std::string_view::npos;
}

/// Where it last holds.
template <std::size_t width, typename Match>
[[nodiscard]] std::size_t findLast(std::string_view text, Match matchesAt) {
    std::size_t places = text.size() < width ? 0 : text.size() - width + 1;
    for (; places >= searchChunk; places -= searchChunk) {
        const char *chunk = text.data() + places - searchChunk;
        unsigned char any = 0;
        for (std::size_t i = 0; i < searchChunk; ++i)
            any |= static_cast<unsigned char>(matchesAt(chunk + i));
        if (any != 0)
            break;
    }
    while (places-- > 0) {
        if (matchesAt(text.data() + places))
            return places;
    }
    return std::string_view::npos;
}

} // namespace burnwick
