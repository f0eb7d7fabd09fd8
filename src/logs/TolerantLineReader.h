// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/LineFields.h"

#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace burnwick {

/// The second reading of a line that the fast parser refused. It holds to the grammar of JSON as strictly,
/// but what it ignores may be any number however large, any escape (lone surrogates too) and nested to any
/// depth; Claude Code writes such lines. Needs no memory but for the texts it returns.
class TolerantLineReader {
public:
    /// The line's fields; absent when the line is not an object in valid JSON, or one of the nine keys has a
    /// value of another type. `line` must be valid UTF-8.
    [[nodiscard]] std::optional<LineFields> read(std::string_view line);

private:
    enum class Found { value, null, failure };
    enum class Text { valid, unpairedSurrogate, failure };

    template <typename ReadMember>
    bool readObject(ReadMember readMember);
    Found readText(std::optional<std::string_view> &text);
    Found readCount(std::optional<std::int64_t> &count);
    Found readMessage(std::optional<LineFields::Message> &message);
    Found readUsage(std::optional<JSONLEntry::UsageWrapper> &usage);
    bool readMember(std::string_view key, LineFields &fields);

    bool skipValue();
    bool skipScalar();
    bool skipNumber();
    bool skipWord(std::string_view word);
    Text readString(std::string *text);
    bool readEscape(std::string *text, bool &unpaired);
    bool readHex(unsigned &unit);

    void skipSpace();
    bool accept(char c);
    [[nodiscard]] char peek() const { return m_rest.empty() ? '\0' : m_rest.front(); }

    std::string_view m_rest;
    std::deque<std::string> m_texts; ///< what the returned views point into
    std::vector<char> m_open;        ///< the brackets that a skipped value has open
};

} // namespace burnwick
