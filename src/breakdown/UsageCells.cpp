// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "breakdown/UsageCells.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace burnwick {

namespace {

/// Returns a hash of the message's identifier, or of its time and tokens if it has none; never 0.
std::uint64_t keyOf(const Message &message, Instant at) {
    std::uint64_t key = message.messageKey;
    if (key == 0) {
        for (const std::int64_t part :
             {std::int64_t{at.time_since_epoch().count()}, message.input, message.output, message.cacheRead})
            key = (key ^ static_cast<std::uint64_t>(part)) * 0x100000001B3U; // as FNV does
    }
    return std::max<std::uint64_t>(1, key ^ message.requestKey);
}

} // namespace

std::vector<UsageCell> usageCells(const BreakdownSums &sums, bool byProject,
                                  std::chrono::sys_days singlySince) {
    using Day = std::optional<std::chrono::sys_days>;
    std::map<std::tuple<Day, std::string_view, std::string_view, std::uint64_t>, UsageCell> cells;
    const auto add = [&](const Message &message, std::optional<Instant> at,
                         std::optional<Picodollars> price) {
        const bool isAdvisor = message.context.isAdvisor;
        const std::int64_t written = addTokens(message.cacheWrite5m, message.cacheWrite1h);
        const std::int64_t tokens =
            SessionTokens{message.input, message.output, written, message.cacheRead}.total();
        if (isAdvisor && tokens == 0)
            return;
        const Day day = at ? Day(std::chrono::floor<std::chrono::days>(*at)) : Day();
        const std::string_view project = byProject ? message.context.folder.view() : std::string_view();
        const std::string_view model = message.context.model.view();
        // Equal keys, which are rare, share a cell: no order of the logs tells them apart.
        const std::uint64_t key = day && *day >= singlySince ? keyOf(message, *at) : 0;
        const auto [cell, isNew] = cells.try_emplace({day, project, model, key});
        if (isNew)
            cell->second = {day, std::string(project), std::string(model), key, {}};
        cell->second.add({message.input, message.output, message.cacheWrite5m, message.cacheWrite1h,
                          message.cacheRead, isAdvisor ? 0 : 1, price ? 0 : tokens, price.value_or(0)});
    };
    sums.forEachMessage(add);
    std::vector<UsageCell> list;
    for (auto &[place, cell] : cells)
        list.push_back(std::move(cell));
    return list;
}

} // namespace burnwick
