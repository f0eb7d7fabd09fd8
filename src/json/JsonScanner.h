// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace burnwick {

/// Walks along a text in JSON. It holds to the grammar strictly, but sets no limits of its own: what is
/// skipped may be any number however large, any escape (lone surrogates too) and nested to any depth. After a
/// failure nothing that it says is of use.
class JsonScanner {
public:
    enum class Text { valid, unpairedSurrogate, failure };

    /// `text` must be valid UTF-8 and outlive the scanner.
    explicit JsonScanner(std::string_view text = {}) noexcept
        : m_rest(text) {}

    /// What has not been consumed.
    [[nodiscard]] std::string_view rest() const noexcept { return m_rest; }
    /// The next character; NUL at the end.
    [[nodiscard]] char peek() const noexcept { return m_rest.empty() ? '\0' : m_rest.front(); }
    /// Consumes the character if it is the next one.
    bool accept(char c) noexcept {
        if (m_rest.empty() || m_rest.front() != c)
            return false;
        m_rest.remove_prefix(1);
        return true;
    }
    void skipSpace();

    /// These consume one value, from its first character; false when it is none of its kind.
    bool skipValue();
    bool skipNumber();
    bool skipWord(std::string_view word);
    /// Appends the string's meaning to `text`, unless that is null; it is of use only when the answer is
    /// `valid`.
    Text readString(std::string *text);
    /// Reads a whole object. readMember(key) gets each key (for the length of the call) and must consume its
    /// value; false ends the reading.
    template <typename ReadMember>
    bool readObject(ReadMember readMember);

private:
    bool skipScalar();
    bool readEscape(std::string *text, bool &unpaired);
    bool readHex(unsigned &unit);

    std::string_view m_rest;
    std::vector<char> m_open; ///< the brackets that a skipped value has open
};

template <typename ReadMember>
bool JsonScanner::readObject(ReadMember readMember) {
    if (!accept('{'))
        return false;
    skipSpace();
    if (accept('}'))
        return true;
    std::string key;
    do {
        skipSpace();
        key.clear();
        const Text text = readString(&key);
        if (text == Text::failure)
            return false;
        skipSpace();
        if (!accept(':'))
            return false;
        skipSpace();
        // A key with an unpaired surrogate is no text; nobody asks for it.
        if (text == Text::unpairedSurrogate ? !skipValue() : !readMember(std::string_view(key)))
            return false;
        skipSpace();
    } while (accept(','));
    return accept('}');
}

} // namespace burnwick
