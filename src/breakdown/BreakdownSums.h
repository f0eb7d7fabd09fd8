// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "breakdown/MessageSelection.h"
#include "model/TimeFilter.h"
#include "model/UsageBreakdown.h"
#include "prices/PriceTable.h"

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace burnwick {

/// Returns the message's price: its logged cost, or else that of the list; null without either.
[[nodiscard]] std::optional<Picodollars> priceOf(const Message &message, std::optional<Instant> at,
                                                 const PriceTable::ModelPrices &prices);

/// The instants of several messages and lines.
struct Period {
    Instant first = Instant::max();
    Instant last = Instant::min();
    bool areAllDated = true;

    void include(const std::optional<Instant> &at) noexcept;
    void include(const Period &other) noexcept;
    [[nodiscard]] bool isSince(Instant begin) const noexcept { return areAllDated && first >= begin; }
};

/// The sums of the messages of each list of a log history in one calendar, so that a change of one list costs
/// the sums of that list alone. Never modified once made, so that threads can share it.
class BreakdownSums {
public:
    /// Computes the sums of the lists that the last object does not have with the same changes. Terminates
    /// the program if a sum of tokens overflows. The prices must outlive the object.
    BreakdownSums(std::span<const LogEntries> lists, std::span<const MessageChanges> changes,
                  const PriceTable &prices, const Calendar &calendar, const BreakdownSums *last = nullptr);
    /// Computes the sums of the other object's lists in another calendar.
    BreakdownSums(const BreakdownSums &other, const Calendar &calendar);

    [[nodiscard]] const Calendar &calendar() const noexcept { return m_calendar; }

    /// Returns the use in the filter's period before `now`. Terminates the program if a sum of tokens
    /// overflows. `sessionCount` is that of the history.
    [[nodiscard]] UsageBreakdown within(TimeFilter filter, Instant now, std::int64_t sessionCount) const;

    /// Calls the function with each message that counts, its time, and its price.
    void forEachMessage(const std::function<void(const Message &, std::optional<Instant>,
                                                 std::optional<Picodollars>)> &use) const;

private:
    struct ListSums;
    struct Block;
    struct SumsToCompute {
        std::size_t place;
        LogEntries entries;
        MessageChanges changes;
    };

    void compute(std::vector<std::shared_ptr<const ListSums>> &sums,
                 const std::vector<SumsToCompute> &unknown) const;
    void makeBlocks(std::span<const std::shared_ptr<const ListSums>> lists, const BreakdownSums *last);

    const PriceTable *m_prices;
    Calendar m_calendar;
    std::vector<std::shared_ptr<const Block>> m_blocks;
};

/// What the messages of one list that count add to the session.
struct SessionPart {
    /// Terminates the program if a sum overflows. The list must not be null.
    SessionPart(LogEntries list, MessageChanges listChanges, const PriceTable &prices);

    LogEntries entries;
    MessageChanges changes;
    SessionTokens tokens;
    Picodollars cost = 0;
    std::int64_t unpricedTokens = 0;
    std::int64_t ratedTokens = 0; ///< input and output of messages with a time
    Period period;
};

/// Returns the figures of the messages that count. The burn rate is that of input and output tokens between
/// the earliest and the latest message, and the projections are at the same rate of cost; both are 0 without
/// two messages of different times.
[[nodiscard]] SessionFigures exactSessionOf(std::span<const std::shared_ptr<const SessionPart>> parts);

} // namespace burnwick
