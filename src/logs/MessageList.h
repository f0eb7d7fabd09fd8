// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/JSONLEntry.h"
#include "logs/UsageDetails.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

namespace burnwick {

/// The facts that many messages of a log have in common.
struct MessageContext {
    InternedString model;
    InternedString folder; ///< of the project; null if unknown
    InternedString session;
    bool isSidechain = false; ///< whether no line of the message is in the main chain
    bool isFast = false;
    bool isBatch = false;
    bool isInUnitedStates = false; ///< whether the inference was bound to the United States
    bool isAdvisor = false;        ///< whether it is another model's usage during a message
    bool hasTime = false;

    bool operator==(const MessageContext &) const = default;
};

/// A message of the assistant, which a log has in one or more lines.
struct Message {
    std::uint64_t messageKey = 0; ///< a hash of its identifier; 0 if it has none
    std::uint64_t requestKey = 0; ///< a hash of its request's identifier; 0 if it has none
    std::optional<Instant> at;    ///< of the first line
    MessageContext context;       ///< this and the rest are those of the line with the most output tokens
    std::int64_t input = 0;       ///< tokens, without those of the cache
    std::int64_t output = 0;
    std::int64_t cacheWrite5m = 0; ///< kept for five minutes
    std::int64_t cacheWrite1h = 0; ///< and for an hour
    std::int64_t cacheRead = 0;
    std::int64_t webSearches = 0;
    std::optional<std::int64_t> cost{}; ///< as logged, in 1e-12 dollars
};

/// The messages of the usage lines of one log, each once, in the order of their first lines.
class MessageList {
public:
    /// From where on lines belong to a project and a session.
    struct Origin {
        std::size_t firstLine = 0;
        InternedString folder;
        InternedString session;

        bool operator==(const Origin &) const = default;
    };

    /// Condenses more lines of the log. Of the lines of a message the one with the most output tokens counts,
    /// the last one of equals. Lines without a message identifier are a message each; errors of the API and
    /// lines that Claude Code wrote in place of a model's answer are no messages.
    void add(std::span<const JSONLEntry> lines, std::span<const UsageDetails> details);

    [[nodiscard]] std::size_t size() const noexcept { return m_messages.size(); }
    [[nodiscard]] Message operator[](std::size_t index) const;
    [[nodiscard]] std::uint64_t messageKeyOf(std::size_t index) const { return m_messages[index].messageKey; }
    /// The projects and sessions of the lines, in their order.
    [[nodiscard]] const std::vector<Origin> &origins() const noexcept { return m_origins; }

    bool operator==(const MessageList &) const = default;

private:
    class Index;

    /// A message in 48 bytes, because a history has hundreds of thousands.
    struct Packed {
        std::uint64_t messageKey = 0;
        std::uint64_t requestKey = 0;
        Instant at;
        std::array<std::uint32_t, 5> counts{};
        std::uint32_t context = 0;

        bool operator==(const Packed &) const = default;
    };
    /// What few messages have: many tokens, web searches, a cost.
    struct Rest {
        std::array<std::int64_t, 5> counts{};
        std::int64_t webSearches = 0;
        std::optional<std::int64_t> cost;

        bool operator==(const Rest &) const = default;
    };

    InternedString projectOf(InternedString folder);
    bool addOrReplace(const Message &message, Index &index);
    void set(std::size_t index, const Message &message);
    std::uint32_t numberOf(const MessageContext &context);

    std::vector<Packed> m_messages;
    std::vector<MessageContext> m_contexts;
    std::map<std::uint32_t, Rest> m_rest; ///< by the message's index
    std::vector<Origin> m_origins;
    std::size_t m_lineCount = 0;
    InternedString m_firstFolder;
};

} // namespace burnwick
