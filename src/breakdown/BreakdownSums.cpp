// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "breakdown/BreakdownSums.h"

#include "async/RunOnThreads.h"
#include "breakdown/BreakdownBuilder.h"
#include "model/CheckedMath.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <unordered_map>

namespace burnwick {

namespace {

/// Calls the function with each message that counts, and its time.
template <typename Use>
void forEachCounted(const MessageList &messages, const MessageChanges &changes, Use use) {
    static const std::map<std::uint32_t, MessageChange> none;
    const auto &list = changes != nullptr ? *changes : none;
    auto change = list.begin();
    for (std::uint32_t index = 0; index < messages.size(); ++index) {
        const bool isChanged = change != list.end() && change->first == index;
        if (!isChanged || change->second.counts) {
            const Message message = messages[index];
            use(message, isChanged ? change->second.at : message.at);
        }
        if (isChanged)
            ++change;
    }
}

/// Calls the function with each line and its project.
template <typename Use>
void forEachLine(const EntryList &lines, Use use) {
    static const MessageList::Origin unknown;
    const auto &origins = lines.messages.origins();
    auto next = origins.begin();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        while (next != origins.end() && next->firstLine <= i)
            ++next;
        use(lines[i], next != origins.begin() ? *std::prev(next) : unknown);
    }
}

/// Looks up each model once.
class ModelPriceCache {
public:
    explicit ModelPriceCache(const PriceTable &table)
        : m_table(table) {}
    const PriceTable::ModelPrices &of(InternedString model) {
        const auto [known, isNew] = m_prices.try_emplace(model);
        if (isNew)
            known->second = m_table.pricesOf(model.view());
        return known->second;
    }

private:
    const PriceTable &m_table;
    std::unordered_map<InternedString, PriceTable::ModelPrices> m_prices;
};

} // namespace

std::optional<Picodollars> priceOf(const Message &message, std::optional<Instant> at,
                                   const PriceTable::ModelPrices &prices) {
    if (message.cost)
        return message.cost;
    if (!at)
        return std::nullopt;
    return prices.priceOf({*at, message.input, message.cacheWrite5m, message.cacheWrite1h, message.cacheRead,
                           message.output, message.webSearches, message.context.isFast,
                           message.context.isBatch, message.context.isInUnitedStates});
}

void Period::include(const std::optional<Instant> &at) noexcept {
    areAllDated &= at.has_value();
    first = std::min(first, at.value_or(Instant::max()));
    last = std::max(last, at.value_or(Instant::min()));
}

void Period::include(const Period &other) noexcept {
    areAllDated &= other.areAllDated;
    first = std::min(first, other.first);
    last = std::max(last, other.last);
}

struct BreakdownSums::ListSums {
    ListSums(LogEntries list, MessageChanges listChanges, ModelPriceCache &prices, const Calendar &calendar)
        : entries(std::move(list))
        , changes(std::move(listChanges))
        , sums(calendar) {
        forEachCounted(entries->messages, changes, [&](const Message &message, std::optional<Instant> at) {
            sums.add(message, at, priceOf(message, at, prices.of(message.context.model)));
            period.include(at);
        });
        forEachLine(*entries, [&](const JSONLEntry &line, const MessageList::Origin &origin) {
            sums.addLine(line, origin);
            period.include(line.timestamp());
        });
    }

    LogEntries entries;
    MessageChanges changes;
    BreakdownBuilder sums;
    Period period;
};

/// Neighbouring lists and their sums. Those of unchanged lists need no new addition.
struct BreakdownSums::Block {
    Block(std::vector<std::shared_ptr<const ListSums>> members, const Calendar &calendar)
        : lists(std::move(members))
        , sums(calendar) {
        for (const auto &list : lists) {
            sums.add(list->sums);
            period.include(list->period);
        }
    }

    std::vector<std::shared_ptr<const ListSums>> lists;
    BreakdownBuilder sums;
    Period period;
};

BreakdownSums::BreakdownSums(std::span<const LogEntries> lists, std::span<const MessageChanges> changes,
                             const PriceTable &prices, const Calendar &calendar, const BreakdownSums *last)
    : m_prices(&prices)
    , m_calendar(calendar) {
    std::unordered_map<const EntryList *, std::shared_ptr<const ListSums>> known;
    if (last != nullptr && last->m_calendar == calendar) {
        for (const auto &block : last->m_blocks) {
            for (const auto &list : block->lists)
                known.emplace(list->entries.get(), list);
        }
    }
    std::vector<std::shared_ptr<const ListSums>> sums;
    std::vector<SumsToCompute> unknown;
    for (std::size_t i = 0; i < lists.size(); ++i) {
        if (lists[i] == nullptr || lists[i]->empty())
            continue;
        const auto found = known.find(lists[i].get());
        const bool isKnown = found != known.end() && found->second->changes == changes[i];
        if (!isKnown)
            unknown.push_back({sums.size(), lists[i], changes[i]});
        sums.push_back(isKnown ? found->second : nullptr);
    }
    compute(sums, unknown);
    makeBlocks(sums, last);
}

BreakdownSums::BreakdownSums(const BreakdownSums &other, const Calendar &calendar)
    : m_prices(other.m_prices)
    , m_calendar(calendar) {
    std::vector<SumsToCompute> unknown;
    for (const auto &block : other.m_blocks) {
        for (const auto &list : block->lists)
            unknown.push_back({unknown.size(), list->entries, list->changes});
    }
    std::vector<std::shared_ptr<const ListSums>> sums(unknown.size());
    compute(sums, unknown);
    makeBlocks(sums, nullptr);
}

void BreakdownSums::compute(std::vector<std::shared_ptr<const ListSums>> &sums,
                            const std::vector<SumsToCompute> &unknown) const {
    // Starting a thread costs about as much as adding this many.
    constexpr std::size_t linesWorthAThread = 1'000;
    std::size_t lines = 0;
    for (const SumsToCompute &list : unknown)
        lines += list.entries->size();
    std::atomic<std::size_t> next = 0;
    const std::size_t threads = std::thread::hardware_concurrency();
    runOnThreads(std::min(threads, 1 + lines / linesWorthAThread), [&] {
        ModelPriceCache prices(*m_prices);
        for (std::size_t i = next++; i < unknown.size(); i = next++)
            sums[unknown[i].place] =
                std::make_shared<const ListSums>(unknown[i].entries, unknown[i].changes, prices, m_calendar);
    });
}

/// Shares those blocks of the last object that have the same lists at the same places: logs in use are the
/// last ones.
void BreakdownSums::makeBlocks(std::span<const std::shared_ptr<const ListSums>> lists,
                               const BreakdownSums *last) {
    constexpr std::size_t listsPerBlock = 32;
    while (!lists.empty()) {
        const auto members = lists.first(std::min(lists.size(), listsPerBlock));
        lists = lists.subspan(members.size());
        const std::size_t place = m_blocks.size();
        if (last != nullptr && place < last->m_blocks.size() &&
            std::ranges::equal(last->m_blocks[place]->lists, members))
            m_blocks.push_back(last->m_blocks[place]);
        else
            m_blocks.push_back(std::make_shared<const Block>(
                std::vector<std::shared_ptr<const ListSums>>(members.begin(), members.end()), m_calendar));
    }
}

UsageBreakdown BreakdownSums::within(TimeFilter filter, Instant now, std::int64_t sessionCount) const {
    const Instant cutOff = cutOffOf(filter, now, m_calendar).value_or(Instant::min());
    BreakdownBuilder builder(m_calendar);
    ModelPriceCache modelPrices(*m_prices);
    for (const auto &block : m_blocks) {
        if (filter == TimeFilter::all || block->period.isSince(cutOff)) {
            builder.add(block->sums);
            continue;
        }
        for (const auto &list : block->lists) {
            if (list->period.last < cutOff)
                continue;
            if (list->period.isSince(cutOff)) {
                builder.add(list->sums);
                continue;
            }
            forEachCounted(list->entries->messages, list->changes,
                           [&](const Message &message, std::optional<Instant> at) {
                               if (at && *at >= cutOff)
                                   builder.add(message, at,
                                               priceOf(message, at, modelPrices.of(message.context.model)));
                           });
            forEachLine(*list->entries, [&](const JSONLEntry &line, const MessageList::Origin &origin) {
                if (line.timestamp() && *line.timestamp() >= cutOff)
                    builder.addLine(line, origin);
            });
        }
    }
    return builder.finish(sessionCount, m_calendar.dayOf(now));
}

void BreakdownSums::forEachMessage(const std::function<void(const Message &, std::optional<Instant>,
                                                            std::optional<Picodollars>)> &use) const {
    ModelPriceCache prices(*m_prices);
    for (const auto &block : m_blocks) {
        for (const auto &list : block->lists)
            forEachCounted(list->entries->messages, list->changes,
                           [&](const Message &message, std::optional<Instant> at) {
                               use(message, at, priceOf(message, at, prices.of(message.context.model)));
                           });
    }
}

SessionPart::SessionPart(LogEntries list, MessageChanges listChanges, const PriceTable &prices)
    : entries(std::move(list))
    , changes(std::move(listChanges)) {
    ModelPriceCache modelPrices(prices);
    forEachCounted(entries->messages, changes, [&](const Message &message, std::optional<Instant> at) {
        const SessionTokens counts{message.input, message.output,
                                   addTokens(message.cacheWrite5m, message.cacheWrite1h), message.cacheRead};
        addCounts(tokens, counts);
        if (const auto price = priceOf(message, at, modelPrices.of(message.context.model)))
            cost = addAmounts(cost, *price);
        else
            unpricedTokens = addTokens(unpricedTokens, counts.total());
        period.include(at);
        if (at)
            ratedTokens = addTokens(ratedTokens, addTokens(message.input, message.output));
    });
}

SessionFigures exactSessionOf(std::span<const std::shared_ptr<const SessionPart>> parts) {
    SessionFigures figures;
    Picodollars cost = 0;
    std::int64_t rated = 0;
    Period period;
    for (const auto &part : parts) {
        addCounts(figures.tokens, part->tokens);
        figures.unpricedTokens = addTokens(figures.unpricedTokens, part->unpricedTokens);
        cost = addAmounts(cost, part->cost);
        rated = addTokens(rated, part->ratedTokens);
        period.include(part->period);
    }
    figures.cost = dollarsOf(cost);
    if (period.first >= period.last)
        return figures;
    constexpr double nanosecondsPerMinute = 60e9;
    const double minutes =
        static_cast<double>(nanosecondsBetween(period.first, period.last)) / nanosecondsPerMinute;
    figures.burnRateTokensPerMin = static_cast<double>(rated) / minutes;
    constexpr double minutesPerDay = 60 * 24;
    figures.projectedTodayCost = figures.cost / minutes * minutesPerDay;
    figures.projectedWeeklyCost = figures.projectedTodayCost * 7;
    figures.projectedMonthlyCost = figures.projectedTodayCost * 30;
    return figures;
}

} // namespace burnwick
