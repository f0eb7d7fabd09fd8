// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/BreakdownRows.h"

#include <algorithm>
#include <tuple>

namespace burnwick {

namespace {

bool isExact(const UsageFigures &usage) {
    return usage.figureChoice == FigureChoice::exact;
}

} // namespace

std::vector<ProjectRow> projectRows(const UsageFigures &usage) {
    std::vector<ProjectRow> rows;
    for (const ProjectUsage &project : usage.breakdown->projects) {
        const std::int64_t tokens = isExact(usage) ? project.total.tokens : project.loggedTokens;
        rows.push_back({project.path, tokens, project.sessions, project.lastUsed, project.total});
    }
    std::ranges::stable_sort(rows, std::ranges::greater(),
                             [](const ProjectRow &row) { return std::tuple(row.price.cost, row.tokens); });
    return rows;
}

std::vector<ModelRow> modelRows(const UsageFigures &usage) {
    std::map<std::string, ModelRow> models;
    for (const ModelUsage &model : usage.breakdown->models) {
        ModelRow &row = models[model.name];
        row.price = model.total;
        if (isExact(usage))
            row = {{},
                   model.input,
                   model.output,
                   model.cacheWrite5m,
                   model.cacheWrite1h,
                   model.cacheRead,
                   model.webSearches,
                   model.total};
    }
    // The exact figures may lack models whose lines are no messages.
    if (!isExact(usage)) {
        for (const ModelStat &model : usage.historicalData.modelStats) {
            models[model.name].input = model.inputTokens;
            models[model.name].output = model.outputTokens;
        }
    }
    std::vector<ModelRow> rows;
    for (auto &[name, row] : models) {
        row.name = name;
        rows.push_back(std::move(row));
    }
    std::ranges::stable_sort(rows, std::ranges::greater(), [](const ModelRow &row) {
        const PricedTokens price = row.price.value_or(PricedTokens());
        return std::tuple(price.cost, price.tokens, row.input);
    });
    return rows;
}

std::vector<DayRow> dayRows(const UsageFigures &usage) {
    std::map<LocalDay, DayRow> days;
    // Which has the tokens of the choice.
    for (const auto &[day, tokens] : usage.historicalData.dailyActivity)
        days[day].tokens = tokens;
    for (const auto &[day, price] : usage.breakdown->days)
        days[day].price = price;
    std::vector<DayRow> rows;
    for (const auto &[day, row] : days)
        rows.push_back({day, row.tokens, row.price});
    return rows;
}

} // namespace burnwick
