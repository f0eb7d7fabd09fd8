// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/InternedString.h"
#include "model/Instant.h"
#include "model/SessionTokens.h"

#include <optional>

namespace burnwick {

/// What Burnwick keeps of one log line.
class JSONLEntry {
public:
    JSONLEntry() noexcept = default;
    /// `usage` is null if the line has none, or no message; counts that it lacks are 0.
    JSONLEntry(InternedString type, std::optional<Instant> timestamp, InternedString model,
               const std::optional<SessionTokens> &usage) noexcept
        : m_counts(usage.value_or(SessionTokens()))
        , m_type(type)
        , m_model(model)
        , m_timestamp(timestamp.value_or(Instant()))
        , m_hasTimestamp(timestamp.has_value())
        , m_hasUsage(usage.has_value()) {}

    /// The kind of line; null if the line has none.
    [[nodiscard]] InternedString type() const noexcept { return m_type; }
    /// Null if the line has no timestamp, or one that parseLogInstant() rejects.
    [[nodiscard]] std::optional<Instant> timestamp() const noexcept {
        return m_hasTimestamp ? std::optional(m_timestamp) : std::nullopt;
    }
    /// The message's model; null if the line has no message, or the message no model.
    [[nodiscard]] InternedString model() const noexcept { return m_model; }
    /// The message's token counts; 0 where the line has none.
    [[nodiscard]] const SessionTokens &counts() const noexcept { return m_counts; }
    /// Whether the line is of the type "assistant" and its message has usage. Only such lines count.
    [[nodiscard]] bool isUsageLine() const noexcept { return m_hasUsage && m_type.view() == "assistant"; }

    /// The session that the line belongs to; null until it is set.
    [[nodiscard]] InternedString sessionId() const noexcept { return m_sessionId; }
    void setSessionId(InternedString sessionId) noexcept { m_sessionId = sessionId; }

    bool operator==(const JSONLEntry &) const = default;

private:
    SessionTokens m_counts;
    InternedString m_type;
    InternedString m_model;
    InternedString m_sessionId;
    Instant m_timestamp;
    bool m_hasTimestamp = false;
    bool m_hasUsage = false;
};

static_assert(sizeof(JSONLEntry) == 72, "histories hold a million of these");

} // namespace burnwick
