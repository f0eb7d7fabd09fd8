// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/BreakdownTable.h"

#include "display/DisplayFormat.h"
#include "display/PriceText.h"
#include "forms/BreakdownRows.h"
#include "forms/IsoText.h"
#include "forms/TableParts.h"
#include "forms/TerminalText.h"
#include "model/CheckedMath.h"

#include <algorithm>
#include <utility>

namespace burnwick {

namespace {

/// A name and its figures, all printable.
struct Line {
    std::string name;
    std::vector<std::string> figures;
};

struct Table {
    std::string title;
    std::string_view noLines;
    Line heads;
    std::vector<Line> lines{};
    std::vector<double> bars{}; ///< behind each line, 0 to 100; may be empty
    Line total{};
    PricedTokens price{}; ///< of all lines
};

std::string costCell(const std::optional<PricedTokens> &price) {
    if (!price)
        return {};
    return priceText(*price) + (price->hasPrice() && price->unpriced > 0 ? "*" : " ");
}

/// A figure that the choice does not have is empty.
std::string countCell(const std::optional<std::int64_t> &count) {
    return count ? tokenCountText(*count) : std::string();
}

template <typename Row>
PricedTokens priceOfAll(const std::vector<Row> &rows) {
    PricedTokens sum;
    for (const Row &row : rows) {
        const PricedTokens price = std::optional(row.price).value_or(PricedTokens());
        sum.tokens = addTokens(sum.tokens, price.tokens);
        sum.unpriced = addTokens(sum.unpriced, price.unpriced);
        sum.cost += price.cost;
    }
    return sum;
}

using Count = std::optional<std::int64_t>;

Count sumOf(const Count &a, const Count &b) {
    return a && b ? Count(addTokens(*a, *b)) : std::nullopt;
}

/// Returns the sum of a count of all rows; null if a row lacks it.
template <typename Row, typename Value>
Count sumOf(const std::vector<Row> &rows, Value Row::*count) {
    Count sum = 0;
    for (const Row &row : rows)
        sum = sumOf(sum, row.*count);
    return sum;
}

std::vector<int> figureColumnsOf(const Table &table) {
    constexpr int most = 11; // so that five fit
    std::vector<int> columns;
    for (std::size_t i = 0; i < table.heads.figures.size(); ++i) {
        int widest = std::max(columnsOf(table.heads.figures[i]), columnsOf(table.total.figures[i]));
        for (const Line &line : table.lines)
            widest = std::max(widest, columnsOf(line.figures[i]));
        columns.push_back(std::min(widest, most));
    }
    return columns;
}

int nameColumnsOf(const Table &table, const std::vector<int> &figureColumns) {
    constexpr int fewest = 12;
    int widest = std::max(fewest, columnsOf(table.total.name));
    for (const Line &line : table.lines)
        widest = std::max(widest, columnsOf(line.name));
    int free = contentColumns;
    for (const int columns : figureColumns)
        free -= columns + 2;
    return std::min(widest, std::max(free, fewest));
}

std::string textOf(const Line &line, int nameColumns, const std::vector<int> &figureColumns) {
    std::string text = leftAligned(elidedInMiddle(line.name, nameColumns), nameColumns);
    for (std::size_t i = 0; i < line.figures.size(); ++i)
        text += "  " + rightAligned(elidedInMiddle(line.figures[i], figureColumns[i]), figureColumns[i]);
    return std::string(indentColumns, ' ') + text;
}

std::string withoutTrailingBlanks(std::string text) {
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

std::string textOf(const Table &table, const UsageFigures &usage, TerminalColors colors) {
    const bool isExact = usage.figureChoice == FigureChoice::exact;
    std::string text =
        bold(table.title, colors) + "  " +
        dim(std::string(periodText(usage.timeFilter)) +
                (isExact ? " · each message once" : " · tokens as logged") + " · costs at API prices",
            colors) +
        '\n';
    const std::string indent(indentColumns, ' ');
    if (table.lines.empty())
        return text + indent + std::string(table.noLines) + '\n';

    const std::vector<int> figureColumns = figureColumnsOf(table);
    const int nameColumns = nameColumnsOf(table, figureColumns);
    text += dim(textOf(table.heads, nameColumns, figureColumns), colors) + '\n';
    for (std::size_t i = 0; i < table.lines.size(); ++i) {
        constexpr int barColumns = 24;
        const std::string bar =
            i < table.bars.size() ? "  " + percentageBar(table.bars[i], barColumns) : std::string();
        text += withoutTrailingBlanks(textOf(table.lines[i], nameColumns, figureColumns) + bar) + '\n';
    }
    text += bold(withoutTrailingBlanks(textOf(table.total, nameColumns, figureColumns)), colors) + '\n';
    if (table.price.unpriced > 0)
        text +=
            indent + dim("* " + unpricedText(table.price) + ": counted, but not in the cost", colors) + '\n';
    return text;
}

/// Returns the path with "~" for the home folder.
std::string shortPath(const std::string &path, const std::string &home) {
    if (path.empty())
        return "Unknown project";
    const std::string folder = home.substr(0, home.find_last_not_of('/') + 1);
    const bool isInHome = !folder.empty() && path.starts_with(folder) &&
                          (path.size() == folder.size() || path[folder.size()] == '/');
    return printableText(isInHome ? '~' + path.substr(folder.size()) : path);
}

} // namespace

std::string projectsTable(const UsageFigures &usage, const std::string &home, TerminalColors colors) {
    const auto rows = projectRows(usage);
    Table table{"Projects", "No projects yet", {"Project", {"Cost ", "Tokens", "Sessions", "Last used"}}};
    for (const ProjectRow &row : rows) {
        const auto lastUsed = row.lastUsed ? isoDate(usage.calendar.dayOf(*row.lastUsed)) : std::string();
        table.lines.push_back(
            {shortPath(row.path, home),
             {costCell(row.price), countCell(row.tokens), std::to_string(row.sessions), lastUsed}});
    }
    table.price = priceOfAll(rows);
    table.total = {"Total: " + countText(std::ssize(rows), "project"),
                   {costCell(table.price), countCell(sumOf(rows, &ProjectRow::tokens)), "", ""}};
    return textOf(table, usage, colors);
}

std::string modelsTable(const UsageFigures &usage, TerminalColors colors) {
    const auto rows = modelRows(usage);
    Table table{"Models", "No model data yet", {"Model", {"Cost ", "Input", "Output"}}};
    const auto lineOf = [](std::string name, const std::optional<PricedTokens> &price,
                           const ModelRow &counts) {
        Line line{std::move(name), {costCell(price), countCell(counts.input), countCell(counts.output)}};
        if (const auto written = sumOf(counts.cacheWrite5m, counts.cacheWrite1h))
            line.figures.insert(line.figures.end(), {countCell(written), countCell(counts.cacheRead)});
        return line;
    };
    if (usage.figureChoice == FigureChoice::exact)
        table.heads.figures.insert(table.heads.figures.end(), {"To cache", "From cache"});
    for (const ModelRow &row : rows)
        table.lines.push_back(
            lineOf(row.name.empty() ? "Unknown model" : printableText(row.name), row.price, row));
    table.price = priceOfAll(rows);
    const ModelRow total{{},
                         *sumOf(rows, &ModelRow::input),
                         *sumOf(rows, &ModelRow::output),
                         sumOf(rows, &ModelRow::cacheWrite5m),
                         sumOf(rows, &ModelRow::cacheWrite1h),
                         sumOf(rows, &ModelRow::cacheRead)};
    table.total = lineOf("Total: " + countText(std::ssize(rows), "model"), table.price, total);
    return textOf(table, usage, colors);
}

std::string daysTable(const UsageFigures &usage, TerminalColors colors) {
    const auto rows = dayRows(usage);
    Table table{"Days", "No days yet", {"Day", {"Cost ", "Tokens"}}};
    std::int64_t most = 1;
    for (const DayRow &row : rows)
        most = std::max(most, row.tokens);
    for (const DayRow &row : rows) {
        table.lines.push_back({isoDate(row.day), {costCell(row.price), countCell(row.tokens)}});
        table.bars.push_back(static_cast<double>(row.tokens) / static_cast<double>(most) * 100);
    }
    table.price = priceOfAll(rows);
    table.total = {"Total: " + countText(std::ssize(rows), "day"),
                   {costCell(table.price), countCell(sumOf(rows, &DayRow::tokens))}};
    return textOf(table, usage, colors);
}

} // namespace burnwick
