// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/HistoryBuilder.h"
#include "logs/MessageList.h"
#include "model/UsageBreakdown.h"
#include "prices/PriceTable.h"

#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace burnwick {

/// Sums messages and lines in any order. For one thread; ends the program when a sum of tokens overflows.
class BreakdownBuilder {
public:
    explicit BreakdownBuilder(const Calendar &calendar)
        : m_cursor(calendar)
        , m_history(calendar) {}

    /// Adds a message that counts, at that time and price; null for a message without one.
    void add(const Message &message, std::optional<Instant> at, std::optional<Picodollars> price);
    /// Adds a line of the project.
    void addLine(const JSONLEntry &line, const MessageList::Origin &origin);
    /// Adds all of the other builder, which has the same calendar.
    void add(const BreakdownBuilder &other);

    [[nodiscard]] UsageBreakdown finish(std::int64_t sessionCount, LocalDay today) const;

private:
    struct Sum {
        std::int64_t tokens = 0;
        std::int64_t unpriced = 0;
        Picodollars cost = 0; ///< saturated

        void add(const Sum &other);
        [[nodiscard]] PricedTokens figures() const;
    };
    struct Model {
        std::array<std::int64_t, 6> counts{};
        Sum total;
    };
    struct Project {
        Sum total;
        std::int64_t loggedTokens = 0;
        std::optional<Instant> lastUsed;
        std::map<LocalDay, Sum> days;
        std::map<LocalDay, std::int64_t> loggedDays;
        std::unordered_set<InternedString> sessions;
        InternedString lastSession; ///< of the sessions; they come in long runs
    };

    /// The sums that were used last: messages come in long runs of one model and one project.
    template <typename Value>
    struct LastUsed {
        InternedString name;
        Value *value = nullptr;

        Value &of(std::unordered_map<InternedString, Value> &map, InternedString wanted) {
            if (value == nullptr || name != wanted) {
                name = wanted;
                value = &map[wanted];
            }
            return *value;
        }
    };

    Calendar::Cursor m_cursor;
    HistoryBuilder m_history;
    Sum m_total;
    std::unordered_map<InternedString, Model> m_models;
    std::unordered_map<InternedString, Project> m_projects;
    std::map<LocalDay, Sum> m_days;
    LastUsed<Model> m_model;
    LastUsed<Project> m_project;
};

} // namespace burnwick
