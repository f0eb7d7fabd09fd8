// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "display/DisplayText.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace burnwick {

namespace {

constexpr std::string_view replacement = "\uFFFD";

struct Range {
    char32_t first;
    char32_t last;
};

/// Unicode 15's general categories Cc, Cf, Zl and Zp, and the whole block of tags, in order.
constexpr Range unseen[] = {
    {0x0000, 0x001F},   {0x007F, 0x009F},   {0x00AD, 0x00AD},   {0x0600, 0x0605},   {0x061C, 0x061C},
    {0x06DD, 0x06DD},   {0x070F, 0x070F},   {0x0890, 0x0891},   {0x08E2, 0x08E2},   {0x180E, 0x180E},
    {0x200B, 0x200F},   {0x2028, 0x202E},   {0x2060, 0x206F},   {0xFEFF, 0xFEFF},   {0xFFF9, 0xFFFB},
    {0x110BD, 0x110BD}, {0x110CD, 0x110CD}, {0x13430, 0x1343F}, {0x1BCA0, 0x1BCA3}, {0x1D173, 0x1D17A},
    {0xE0000, 0xE007F},
};

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// The length in bytes of the text's first character; 0 for a malformed one.
std::size_t decode(std::string_view text, char32_t &character) {
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80) {
        character = lead;
        return 1;
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length)
        return 0;
    character = lead & (0xFFU >> (length + 1));
    for (const char byte : text.substr(1, length - 1)) {
        if (!isContinuation(byte))
            return 0;
        character = character << 6U | (static_cast<unsigned char>(byte) & 0x3FU);
    }
    constexpr std::array<char32_t, 5> least{0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    return character < least[length] || character > 0x10FFFF || isSurrogate ? 0 : length;
}

/// The offset of the last `count` characters, or a smaller one in malformed text.
std::size_t beginOfTail(std::string_view text, std::size_t count) {
    std::size_t begin = text.size();
    while (begin > 0 && count > 0)
        count -= isContinuation(text[--begin]) ? 0 : 1;
    return begin;
}

/// Takes up to `count` characters from the beginning of `text` and replaces the unseen ones.
std::string takeSeen(std::string_view &text, std::size_t count) {
    std::string seen;
    for (; count > 0 && !text.empty(); --count) {
        char32_t character = 0;
        const std::size_t length = decode(text, character);
        seen += length == 0 || isUnseen(character) ? replacement : text.substr(0, length);
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return seen;
}

} // namespace

bool isUnseen(char32_t character) {
    const auto *range = std::ranges::lower_bound(unseen, character, {}, &Range::last);
    return range != std::end(unseen) && range->first <= character;
}

std::string displayText(std::string_view text, std::size_t longest) {
    std::string_view rest = text;
    std::string whole = takeSeen(rest, longest);
    if (rest.empty())
        return whole;
    const std::size_t forTail = (longest - 1) / 2;
    rest = text;
    const std::string head = takeSeen(rest, longest - 1 - forTail);
    std::string_view tail = text.substr(beginOfTail(text, forTail));
    return head + "…" + takeSeen(tail, forTail);
}

} // namespace burnwick
