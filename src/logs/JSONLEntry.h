// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/InternedString.h"
#include "logs/LogTimestamp.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace burnwick {

/// What Burnwick keeps of one log line. Made by the hundred thousand, so it is stored in 72 bytes and handed
/// out in its natural shape.
class JSONLEntry {
public:
    /// The token counts of a line; a count that the line does not have is absent.
    struct UsageWrapper {
        std::optional<std::int64_t> inputTokens;
        std::optional<std::int64_t> outputTokens;
        std::optional<std::int64_t> cacheCreationInputTokens;
        std::optional<std::int64_t> cacheReadInputTokens;

        bool operator==(const UsageWrapper &) const = default;
    };
    /// The assistant message of a line.
    struct MessageWrapper {
        InternedString model;
        std::optional<UsageWrapper> usage;

        bool operator==(const MessageWrapper &) const = default;
    };

    JSONLEntry() noexcept = default;
    JSONLEntry(InternedString type, LogTimestamp timestamp, const std::optional<MessageWrapper> &message);

    [[nodiscard]] InternedString type() const noexcept { return m_type; }
    [[nodiscard]] const LogTimestamp &timestamp() const noexcept { return m_timestamp; }
    [[nodiscard]] std::optional<MessageWrapper> message() const noexcept;

    /// The session the line belongs to; absent (an empty text) until the scanner assigns it.
    [[nodiscard]] InternedString sessionId() const noexcept { return m_sessionId; }
    void setSessionId(InternedString sessionId) noexcept { m_sessionId = sessionId; }

    /// The message's model; absent without message or model.
    [[nodiscard]] InternedString model() const noexcept { return m_model; }
    /// The message's counts as they are summed: absent counts, and all four without usage, are 0.
    struct Counts {
        std::int64_t input, output, cacheCreation, cacheRead;
    };
    [[nodiscard]] Counts counts() const noexcept {
        return {m_counts[0], m_counts[1], m_counts[2], m_counts[3]};
    }
    /// Whether the line counts: of the type "assistant", with a message that has usage.
    [[nodiscard]] bool isUsageLine() const noexcept {
        return (m_present & usagePresent) != 0 && m_type.view() == "assistant";
    }

private:
    static constexpr std::uint8_t messagePresent = 1U << 4U;
    static constexpr std::uint8_t usagePresent = 1U << 5U;

    std::array<std::int64_t, 4> m_counts{};
    InternedString m_type;
    InternedString m_model;
    InternedString m_sessionId;
    [[no_unique_address]] LogTimestamp m_timestamp;
    std::uint8_t m_present = 0; ///< bits 0 to 3: the counts
};

static_assert(sizeof(JSONLEntry) == 72, "histories hold a million of these");

/// The entry as one line of JSON without a line feed: its keys when present, never null, never the session.
[[nodiscard]] std::string encodeEntry(const JSONLEntry &entry);

} // namespace burnwick
