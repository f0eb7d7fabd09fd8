// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "json/JsonScanner.h"

#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace burnwick {

namespace {

constexpr std::size_t simpleEscapeSize = 2;
constexpr std::size_t codeUnitSize = 6; ///< of \uXXXX

unsigned char toByte(char c) {
    return static_cast<unsigned char>(c);
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Nonzero for a byte that skipString() must inspect: a control character, an unescaped quote, or a backslash
/// that begins an escape other than the most frequent ones. For single bytes and for vectors of bytes.
template <typename Bytes>
auto isSpecial(Bytes previous, Bytes bytes, Bytes next) {
    return (bytes < 0x20) | ((bytes == '"') & (previous != '\\')) |
           ((bytes == '\\') & (next != 'n') & (next != '"') & (next != 't'));
}

template <typename Bytes>
Bytes load(const char *from) {
    Bytes bytes;
    std::memcpy(&bytes, from, sizeof bytes);
    return bytes;
}

/// Returns the index of the first special byte at or after `at`, or the text's size. Also reads the opening
/// quote before the text.
std::size_t findSpecial(std::string_view text, std::size_t at) {
    using Bytes [[gnu::vector_size(16)]] = unsigned char;
    static_assert(std::endian::native == std::endian::little);
    for (; at + sizeof(Bytes) < text.size(); at += sizeof(Bytes)) {
        const char *from = text.data() + at;
        const auto special = isSpecial(load<Bytes>(from - 1), load<Bytes>(from), load<Bytes>(from + 1));
        std::array<std::uint64_t, 2> halves{};
        std::memcpy(halves.data(), &special, sizeof special);
        if (halves[0] != 0)
            return at + static_cast<std::size_t>(std::countr_zero(halves[0])) / 8;
        if (halves[1] != 0)
            return at + sizeof halves[0] + static_cast<std::size_t>(std::countr_zero(halves[1])) / 8;
    }
    for (; at < text.size(); ++at) {
        const char *from = text.data() + at;
        const char next = at + 1 < text.size() ? from[1] : '\0';
        if (isSpecial<unsigned char>(toByte(from[-1]), toByte(from[0]), toByte(next)) != 0)
            break;
    }
    return at;
}

/// Returns the code unit of an escape such as \u0041 at the start of the text; null for other text.
std::optional<unsigned> codeUnit(std::string_view text) {
    if (text.size() < codeUnitSize || !text.starts_with("\\u"))
        return std::nullopt;
    unsigned unit = 0;
    const char *last = text.data() + codeUnitSize;
    const auto [end, error] = std::from_chars(text.data() + 2, last, unit, 16);
    return error == std::errc() && end == last ? std::optional(unit) : std::nullopt;
}

/// The character of an escape such as \n, indexed by the escape's second character; NUL for other indexes.
constexpr std::array<char, 256> simpleEscapes = [] {
    std::array<char, 256> meanings{};
    constexpr std::string_view seconds = "\"\\/bfnrt";
    constexpr std::string_view characters = "\"\\/\b\f\n\r\t";
    for (std::size_t i = 0; i < seconds.size(); ++i)
        meanings[static_cast<unsigned char>(seconds[i])] = characters[i];
    return meanings;
}();
char simpleEscape(char second) {
    return simpleEscapes[toByte(second)];
}

/// Returns the size of the escape at the start of the text; 0 if it is missing or malformed.
std::size_t escapeSize(std::string_view text) {
    if (text.size() >= simpleEscapeSize && text[0] == '\\' && simpleEscape(text[1]) != '\0')
        return simpleEscapeSize;
    return codeUnit(text) ? codeUnitSize : 0;
}

void appendUtf8(std::string &text, unsigned codePoint) {
    const auto append = [&text](unsigned byte) {
        text += static_cast<char>(static_cast<unsigned char>(byte));
    };
    if (codePoint < 0x80) {
        append(codePoint);
    } else if (codePoint < 0x800) {
        append(0xC0U | codePoint >> 6U);
        append(0x80U | (codePoint & 0x3FU));
    } else if (codePoint < 0x10000) {
        append(0xE0U | codePoint >> 12U);
        append(0x80U | (codePoint >> 6U & 0x3FU));
        append(0x80U | (codePoint & 0x3FU));
    } else {
        append(0xF0U | codePoint >> 18U);
        append(0x80U | (codePoint >> 12U & 0x3FU));
        append(0x80U | (codePoint >> 6U & 0x3FU));
        append(0x80U | (codePoint & 0x3FU));
    }
}

} // namespace

/// Iterative, because hostile JSON may be nested too deeply for the stack.
bool JsonScanner::skipValue() {
    m_open.clear();
    while (true) {
        skipSpace();
        if (peek() == '{' || peek() == '[') {
            m_open.push_back(peek() == '{' ? '}' : ']');
            m_rest.remove_prefix(1);
            skipSpace();
            if (!accept(m_open.back())) {
                if (m_open.back() == '}' && !skipKey())
                    return false;
                continue;
            }
            m_open.pop_back();
        } else if (!skipScalar()) {
            return false;
        }
        // A value has ended: close the arrays and objects that end here, or continue with the next member.
        while (true) {
            if (m_open.empty())
                return true;
            skipSpace();
            if (accept(','))
                break;
            if (!accept(m_open.back()))
                return false;
            m_open.pop_back();
        }
        skipSpace();
        if (m_open.back() == '}' && !skipKey())
            return false;
    }
}

bool JsonScanner::skipKey() {
    if (!skipString())
        return false;
    skipSpace();
    return accept(':');
}

bool JsonScanner::skipScalar() {
    switch (peek()) {
    case '"':
        return skipString().has_value();
    case 't':
        return skipWord("true");
    case 'f':
        return skipWord("false");
    case 'n':
        return skipWord("null");
    default:
        return skipNumber();
    }
}

bool JsonScanner::skipNumber() {
    const auto skipDigits = [this] {
        const bool any = isDigit(peek());
        while (isDigit(peek()))
            m_rest.remove_prefix(1);
        return any;
    };
    accept('-');
    if (!accept('0') && !skipDigits())
        return false;
    if (accept('.') && !skipDigits())
        return false;
    if (accept('e') || accept('E')) {
        if (!accept('+'))
            accept('-');
        return skipDigits();
    }
    return !isDigit(peek());
}

bool JsonScanner::skipWord(std::string_view word) {
    if (!m_rest.starts_with(word))
        return false;
    m_rest.remove_prefix(word.size());
    return true;
}

/// Consumes a string and returns the text between its quotes; null if it is malformed or not a string.
std::optional<std::string_view> JsonScanner::skipString() {
    if (!accept('"'))
        return std::nullopt;
    const auto isAtQuote = [this](std::size_t at) { return m_rest.substr(at).starts_with('"'); };
    std::size_t size = 0;
    // A quote directly after an escape ends the string, also when the escape ends with a backslash.
    while (!isAtQuote(size)) {
        size = findSpecial(m_rest, size);
        if (isAtQuote(size))
            break;
        const std::size_t escape = escapeSize(m_rest.substr(size));
        if (escape == 0)
            return std::nullopt;
        size += escape;
    }
    const std::string_view quoted = m_rest.substr(0, size);
    m_rest.remove_prefix(size + 1);
    return quoted;
}

std::optional<std::string_view> JsonScanner::readString(std::string &unescaped) {
    const auto quoted = skipString();
    return quoted ? unescape(*quoted, unescaped) : std::nullopt;
}

std::optional<std::string_view> JsonScanner::unescape(std::string_view quoted, std::string &unescaped) {
    std::size_t plain = quoted.find('\\');
    if (plain == std::string_view::npos)
        return quoted;
    unescaped.clear();
    for (; plain != std::string_view::npos; plain = quoted.find('\\')) {
        unescaped += quoted.substr(0, plain);
        quoted.remove_prefix(plain);
        const auto unit = codeUnit(quoted);
        if (!unit) {
            unescaped += simpleEscape(quoted[1]);
            quoted.remove_prefix(simpleEscapeSize);
            continue;
        }
        quoted.remove_prefix(codeUnitSize);
        if (*unit < 0xD800 || *unit >= 0xE000) {
            appendUtf8(unescaped, *unit);
            continue;
        }
        const auto second = codeUnit(quoted);
        if (*unit >= 0xDC00 || !second || *second < 0xDC00 || *second >= 0xE000)
            return std::nullopt;
        appendUtf8(unescaped, 0x10000U + ((*unit - 0xD800U) << 10U) + (*second - 0xDC00U));
        quoted.remove_prefix(codeUnitSize);
    }
    unescaped += quoted;
    return unescaped;
}

} // namespace burnwick
