// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "json/JsonScanner.h"

#include <charconv>

namespace burnwick {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
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

/// Without recursion: a hostile text may be nested as deeply as it is long.
bool JsonScanner::skipValue() {
    m_open.clear();
    while (true) {
        skipSpace();
        if (peek() == '{' || peek() == '[') {
            m_open.push_back(peek() == '{' ? '}' : ']');
            m_rest.remove_prefix(1);
            skipSpace();
            if (!accept(m_open.back())) {
                if (m_open.back() == ']')
                    continue;
                if (readString(nullptr) == Text::failure)
                    return false;
                skipSpace();
                if (!accept(':'))
                    return false;
                continue;
            }
            m_open.pop_back();
        } else if (!skipScalar()) {
            return false;
        }
        // A value has ended: close what ends with it, or go on to its neighbour.
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
        if (m_open.back() == '}') {
            skipSpace();
            if (readString(nullptr) == Text::failure)
                return false;
            skipSpace();
            if (!accept(':'))
                return false;
        }
    }
}

bool JsonScanner::skipScalar() {
    switch (peek()) {
    case '"':
        return readString(nullptr) != Text::failure;
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

JsonScanner::Text JsonScanner::readString(std::string *text) {
    if (!accept('"'))
        return Text::failure;
    bool unpaired = false;
    while (!m_rest.empty()) {
        const char c = m_rest.front();
        if (static_cast<unsigned char>(c) < 0x20)
            return Text::failure;
        m_rest.remove_prefix(1);
        if (c == '"')
            return unpaired ? Text::unpairedSurrogate : Text::valid;
        if (c != '\\') {
            if (text != nullptr)
                *text += c;
        } else if (!readEscape(text, unpaired)) {
            return Text::failure;
        }
    }
    return Text::failure;
}

/// Reads what follows a backslash.
bool JsonScanner::readEscape(std::string *text, bool &unpaired) {
    constexpr std::string_view escapes = "\"\\/bfnrt";
    constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
    if (const auto simple = escapes.find(peek()); !m_rest.empty() && simple != std::string_view::npos) {
        m_rest.remove_prefix(1);
        if (text != nullptr)
            *text += meanings[simple];
        return true;
    }
    unsigned unit = 0;
    if (!accept('u') || !readHex(unit))
        return false;
    const bool leading = unit >= 0xD800 && unit < 0xDC00;
    const bool trailing = unit >= 0xDC00 && unit < 0xE000;
    if (leading && m_rest.starts_with("\\u")) {
        const std::string_view afterUnit = m_rest;
        m_rest.remove_prefix(2);
        unsigned second = 0;
        if (!readHex(second))
            return false;
        if (second >= 0xDC00 && second < 0xE000) {
            if (text != nullptr)
                appendUtf8(*text, 0x10000U + ((unit - 0xD800U) << 10U) + (second - 0xDC00U));
            return true;
        }
        m_rest = afterUnit;
    }
    if (leading || trailing)
        unpaired = true;
    else if (text != nullptr)
        appendUtf8(*text, unit);
    return true;
}

bool JsonScanner::readHex(unsigned &unit) {
    constexpr std::size_t digits = 4;
    if (m_rest.size() < digits)
        return false;
    const auto [end, error] = std::from_chars(m_rest.data(), m_rest.data() + digits, unit, 16);
    if (error != std::errc() || end != m_rest.data() + digits)
        return false;
    m_rest.remove_prefix(digits);
    return true;
}

void JsonScanner::skipSpace() {
    const auto end = m_rest.find_first_not_of(" \t\r\n");
    m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end);
}

} // namespace burnwick
