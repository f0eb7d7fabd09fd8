// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/LineFilter.h"

#include "logs/ByteSearch.h"

#include <algorithm>

namespace burnwick {

namespace {

std::size_t findUsageKey(std::string_view block, std::size_t from) {
    constexpr std::string_view key = "\"usage\"";
    while (true) {
        // The quotes and the rarest letter first, the whole word only where these are in place.
        const std::size_t at = findFirst<key.size()>(
            block, from, [](const char *p) { return (p[0] == '"') & (p[4] == 'g') & (p[6] == '"'); });
        if (at == std::string_view::npos || block.compare(at, key.size(), key) == 0)
            return at;
        from = at + 1;
    }
}

bool namesAssistant(std::string_view line) {
    constexpr std::string_view value = "\"assistant\"";
    std::size_t at = 0;
    while (true) {
        at = findFirst<value.size()>(
            line, at, [](const char *p) { return (p[0] == '"') & (p[1] == 'a') & (p[10] == '"'); });
        if (at == std::string_view::npos || line.compare(at, value.size(), value) == 0)
            return at != std::string_view::npos;
        ++at;
    }
}

} // namespace

std::size_t findCandidateLine(std::string_view block, std::size_t from, bool escapedLetters) {
    if (escapedLetters)
        return from < block.size() ? from : std::string_view::npos;
    while (true) {
        const std::size_t key = findUsageKey(block, from);
        if (key == std::string_view::npos)
            return key;
        const std::size_t feed = findLast(block.substr(from, key - from), '\n');
        const std::size_t begin = feed == std::string_view::npos ? from : from + feed + 1;
        const std::size_t end = std::min(block.find('\n', key), block.size());
        // Results of tools and subagents carry usage of their own in lines of the user.
        if (namesAssistant(block.substr(begin, end - begin)))
            return begin;
        from = end;
    }
}

bool hasEscapedLetters(std::string_view block) {
    // Lower-case letters are U+0061 to U+007A.
    return findFirst<5>(block, 0, [](const char *p) {
               return (p[0] == '\\') & (p[1] == 'u') & (p[2] == '0') & ((p[4] & ~1) == '6');
           }) != std::string_view::npos;
}

} // namespace burnwick
