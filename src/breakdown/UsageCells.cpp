// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "breakdown/UsageCells.h"

#include <map>
#include <tuple>

namespace burnwick {

std::vector<UsageCell> usageCells(const BreakdownSums &sums, bool byProject) {
    using Day = std::optional<std::chrono::sys_days>;
    std::map<std::tuple<Day, std::string_view, std::string_view>, UsageCell> cells;
    sums.forEachMessage(
        [&](const Message &message, std::optional<Instant> at, std::optional<Picodollars> price) {
            const Day day = at ? Day(std::chrono::floor<std::chrono::days>(*at)) : Day();
            const std::string_view project = byProject ? message.context.folder.view() : std::string_view();
            const std::string_view model = message.context.model.view();
            const std::int64_t tokens =
                SessionTokens{message.input, message.output,
                              addTokens(message.cacheWrite5m, message.cacheWrite1h), message.cacheRead}
                    .total();
            if (message.context.isAdvisor && tokens == 0)
                return;
            const auto [cell, isNew] = cells.try_emplace({day, project, model});
            if (isNew)
                cell->second = {day, std::string(project), std::string(model), {}};
            cell->second.add({message.input, message.output, message.cacheWrite5m, message.cacheWrite1h,
                              message.cacheRead, message.context.isAdvisor ? 0 : 1, price ? 0 : tokens,
                              price.value_or(0)});
        });
    std::vector<UsageCell> list;
    for (auto &[place, cell] : cells)
        list.push_back(std::move(cell));
    return list;
}

} // namespace burnwick
