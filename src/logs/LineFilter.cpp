// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/LineFilter.h"

#include "logs/ByteSearch.h"

namespace burnwick {

namespace {

// Both look for two quotes and a letter first, and at the whole word only where these are in place; each from
// that end of the line near which Claude Code writes the word.

bool hasUsageKey(std::string_view line) {
    constexpr std::string_view key = "\"usage\"";
    while (true) {
        const std::size_t at = findLast<key.size()>(
            line, [](const char *p) { return (p[0] == '"') & (p[4] == 'g') & (p[6] == '"'); });
        if (at == std::string_view::npos || line.compare(at, key.size(), key) == 0)
            return at != std::string_view::npos;
        line = line.substr(0, at + key.size() - 1);
    }
}

bool namesAssistant(std::string_view line) {
    constexpr std::string_view value = "\"assistant\"";
    while (true) {
        const std::size_t at = findFirst<value.size()>(
            line, [](const char *p) { return (p[0] == '"') & (p[1] == 'a') & (p[10] == '"'); });
        if (at == std::string_view::npos || line.compare(at, value.size(), value) == 0)
            return at != std::string_view::npos;
        line.remove_prefix(at + 1);
    }
}

/// Whether an escape stands for a lower-case letter, such as \u0075 for u. Only then can a key or value be
/// spelled in a way that a plain search misses.
bool hasEscapedLetters(std::string_view line) {
    // Lower-case letters are U+0061 to U+007A.
    return findFirst<5>(line, [](const char *p) {
               return (p[0] == '\\') & (p[1] == 'u') & (p[2] == '0') & ((p[4] & ~1) == '6');
           }) != std::string_view::npos;
}

bool search(std::string_view line) {
    // Results of tools and subagents carry usage of their own in lines of the user.
    return (hasUsageKey(line) && namesAssistant(line)) || hasEscapedLetters(line);
}

#if defined(__x86_64__)
/// The same, compiled for the wider vectors that most processors have.
[[gnu::target("avx2"), gnu::flatten]] bool searchWide(std::string_view line) {
    return search(line);
}
#endif

} // namespace

bool mayBeUsageLine(std::string_view line) {
#if defined(__x86_64__)
    static const bool hasWideVectors = __builtin_cpu_supports("avx2") != 0;
    if (hasWideVectors)
        return searchWide(line);
#endif
    return search(line);
}

} // namespace burnwick
