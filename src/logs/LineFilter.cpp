// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/LineFilter.h"

#include "logs/ByteSearch.h"

namespace burnwick {

namespace {

// Each search compares two characters first, and the whole word only where these match; it begins at that end
// of the line near which Claude Code writes the word.

bool hasUsageKey(std::string_view line) {
    constexpr std::string_view key = "\"usage\"";
    return !visitMatchesFromEnd<key.size()>(
        line, [](const char *p) { return isByte(p[0], '"') & isByte(p[4], 'g') & isByte(p[6], '"'); },
        [=](std::size_t at) { return line.compare(at, key.size(), key) != 0; });
}

bool namesAssistant(std::string_view line) {
    constexpr std::string_view value = "\"assistant\"";
    return !visitMatches<value.size()>(
        line, [](const char *p) { return isByte(p[0], '"') & isByte(p[1], 'a') & isByte(p[10], '"'); },
        [=](std::size_t at) { return line.compare(at, value.size(), value) != 0; });
}

/// Whether an escape represents a lower-case letter, such as \u0075 for u. Only then a key or value can be
/// spelled so that the other searches miss it.
bool hasEscapedLetters(std::string_view line) {
    // Lower-case letters are U+0061 to U+007A.
    return !visitMatches<5>(
        line,
        [](const char *p) {
            return isByte(p[0], '\\') & isByte(p[1], 'u') & isByte(static_cast<char>(p[4] & ~1), '6');
        },
        [=](std::size_t at) { return line.compare(at, 4, "\\u00") != 0; });
}

bool search(std::string_view line) {
    // Results of tools and subagents have usage in lines of the user.
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
