// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/JSONLEntry.h"
#include "json/JsonScanner.h"

#include <optional>
#include <string>
#include <string_view>

namespace burnwick {

/// Decodes log lines one after the other, reusing its buffers. For one thread.
class JSONLDecoder {
public:
    /// Returns the line's entry, without a session, whether it is a usage line or not. Returns null if the
    /// line is not a JSON object, or one of the nine keys has a value of another type than expected. Of equal
    /// keys the last one counts. `line` must be valid UTF-8.
    [[nodiscard]] std::optional<JSONLEntry> decode(std::string_view line);

private:
    /// A string, and the buffer for it if it has escapes.
    struct Text {
        std::optional<std::string_view> value;
        std::string unescaped;
    };

    bool readMember(std::string_view key);
    bool readMessage();
    bool readUsage();
    bool readText(Text &text);
    bool readCount(std::int64_t &count);

    JsonScanner m_json;
    Text m_type;
    Text m_timestamp;
    Text m_model;
    std::optional<SessionTokens> m_usage;
    InternedString m_lastType;
    InternedString m_lastModel;
};

} // namespace burnwick
