// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/JSONLEntry.h"
#include "logs/UsageDetails.h"
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
    /// Returns the details of the line that was decoded last, which must still exist.
    [[nodiscard]] UsageDetails details();

private:
    /// A string, and the buffer for it if it has escapes.
    struct Text {
        std::optional<std::string_view> value;
        std::string unescaped;
    };
    // The values of members that details() returns, as JSON; empty if absent.
    struct RawUsage {
        std::string_view cacheWrites, tier, speed, geography, serverTools, iterations;

        std::string_view *named(std::string_view key);
    };
    struct RawMessage {
        std::string_view id;
        RawUsage usage;
    };
    struct RawLine {
        std::string_view uuid, session, folder, request, sidechain, apiError, cost;
        RawMessage message;

        std::string_view *named(std::string_view key);
    };

    bool readMember(std::string_view key);
    bool readMessage();
    bool readUsage();
    bool readText(Text &text);
    bool readCount(std::int64_t &count);
    bool readRaw(std::string_view &json);
    std::string_view member(std::string_view object, std::string_view name);
    std::string_view textOf(std::string_view json);
    InternedString nameOf(std::string_view json, InternedString &last);
    std::vector<AdvisorUsage> advisors(std::string_view array);

    JsonScanner m_json;
    Text m_type;
    Text m_timestamp;
    Text m_model;
    std::optional<SessionTokens> m_usage;
    InternedString m_lastType;
    InternedString m_lastModel;
    RawLine m_raw;
    std::string m_unescaped;
    InternedString m_lastSession, m_lastFolder, m_lastTier, m_lastSpeed, m_lastGeography, m_lastAdvisor;
};

} // namespace burnwick
