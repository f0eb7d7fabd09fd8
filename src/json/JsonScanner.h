// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace burnwick {

/// Reads JSON from left to right. Strict about the grammar, also in values that are skipped, but without
/// limits: a skipped value may be a number of any size, contain escapes of unpaired surrogates and be nested
/// to any depth. After a failure the results of further calls are unspecified.
class JsonScanner {
public:
    /// `text` must be valid UTF-8 and outlive the scanner.
    explicit JsonScanner(std::string_view text = {}) noexcept
        : m_rest(text) {}

    /// Returns the unconsumed text.
    [[nodiscard]] std::string_view rest() const noexcept { return m_rest; }
    /// Returns the next character; NUL at the end.
    [[nodiscard]] char peek() const noexcept { return m_rest.empty() ? '\0' : m_rest.front(); }
    /// Consumes the character if it is the next one.
    bool accept(char c) noexcept {
        if (m_rest.empty() || m_rest.front() != c)
            return false;
        m_rest.remove_prefix(1);
        return true;
    }
    void skipSpace() noexcept {
        while (!m_rest.empty() && (m_rest.front() == ' ' || m_rest.front() == '\t' ||
                                   m_rest.front() == '\r' || m_rest.front() == '\n'))
            m_rest.remove_prefix(1);
    }

    /// These consume one value, from its first character. They return false for a malformed value or one of
    /// another kind.
    bool skipValue();
    bool skipNumber();
    bool skipWord(std::string_view word);

    /// Consumes a string and returns its text: a view of the input if the string has no escapes, otherwise of
    /// `unescaped`. Returns null when it is malformed, not a string, or has unpaired surrogates.
    std::optional<std::string_view> readString(std::string &unescaped);

    /// Reads a whole object. Calls readMember(key), which must consume the value and returns false to stop.
    /// The key is valid during the call. Skips members whose keys have unpaired surrogates.
    template <typename ReadMember>
    bool readObject(ReadMember readMember);

private:
    std::optional<std::string_view> skipString();
    bool skipKey();
    bool skipScalar();
    static std::optional<std::string_view> unescape(std::string_view quoted, std::string &unescaped);

    std::string_view m_rest;
    std::string m_open; ///< the closing brackets of the values being skipped
};

template <typename ReadMember>
bool JsonScanner::readObject(ReadMember readMember) {
    if (!accept('{'))
        return false;
    skipSpace();
    if (accept('}'))
        return true;
    std::string unescaped;
    do {
        skipSpace();
        const auto quoted = skipString();
        if (!quoted)
            return false;
        skipSpace();
        if (!accept(':'))
            return false;
        skipSpace();
        const auto key = unescape(*quoted, unescaped);
        if (key ? !readMember(*key) : !skipValue())
            return false;
        skipSpace();
    } while (accept(','));
    return accept('}');
}

} // namespace burnwick
