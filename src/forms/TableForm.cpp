// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/TableForm.h"

#include "display/DisplayFormat.h"
#include "display/LimitText.h"
#include "display/PriceText.h"
#include "display/StatFigures.h"
#include "display/StatusTitle.h"
#include "forms/Sparkline.h"
#include "forms/TableParts.h"
#include "forms/TerminalText.h"

#include <algorithm>
#include <span>
#include <vector>

namespace burnwick {

namespace {

constexpr int labelColumns = 16;
constexpr int valueColumns = 19;
constexpr int gapColumns = 6;
static_assert(2 * (labelColumns + valueColumns) + gapColumns == contentColumns);
constexpr int shareBarColumns = 12;
constexpr int usageBarColumns = 24;
constexpr std::size_t mostModelsShown = 8;

class Table {
public:
    explicit Table(TerminalColors colors)
        : m_colors(colors) {}

    void heading(std::string_view text, std::string_view remark) {
        m_text += '\n' + bold(text, m_colors);
        if (!remark.empty())
            m_text += "  " + dim(remark, m_colors);
        m_text += '\n';
    }
    void line(std::string_view printable) {
        m_text += blanks(indentColumns);
        m_text.append(printable) += '\n';
    }
    /// Two columns of figures, the first half of them in the left one.
    void figures(std::span<const StatFigure> figures) {
        const std::size_t rows = figures.size() / 2;
        for (std::size_t row = 0; row < rows; ++row)
            line(cell(figures[row]) + blanks(gapColumns) + cell(figures[rows + row]));
    }
    [[nodiscard]] std::string dimmed(std::string_view printable) const { return dim(printable, m_colors); }
    [[nodiscard]] std::string take() && { return std::move(m_text); }

private:
    static std::string blanks(int count) { return std::string(static_cast<std::size_t>(count), ' '); }

    [[nodiscard]] std::string cell(const StatFigure &figure) const {
        const std::string value = elidedInMiddle(printableText(figure.value), valueColumns);
        return dimmed(leftAligned(figure.label, labelColumns)) + rightAligned(value, valueColumns);
    }

    TerminalColors m_colors;
    std::string m_text;
};

std::string titleLine(const Snapshot &snapshot, TerminalColors colors) {
    constexpr std::string_view name = "Burnwick";
    const StatusTitle title = buildStatusTitle(snapshot);
    const int free = indentColumns + contentColumns - columnsOf(name) - columnsOf(plainText(title));
    return bold(name, colors) + std::string(static_cast<std::size_t>(std::max(free, 2)), ' ') +
           styledTitle(title, snapshot.account.statusIndicator(), colors) + '\n';
}

void addSession(Table &table, const UsageFigures &usage) {
    const PricedTokens price = shownPrice(usage);
    const std::string remark =
        usage.hasJSONLData ? "logs of the last 24 hours" : "no usage in the logs of the last 24 hours";
    table.heading("Session", usage.figureChoice == FigureChoice::exact
                                 ? remark + " · each message once, at its model's price"
                                 : remark);
    const SessionTokens &tokens = usage.sessionTokens;
    const StatFigure figures[] = {
        {"Input", tokenCountText(tokens.input)},
        {"Output", tokenCountText(tokens.output)},
        {"Cache creation", tokenCountText(tokens.cacheCreation)},
        {"Cache read", tokenCountText(tokens.cacheRead)},
        {"Total tokens", tokenCountText(tokens.total())},
        {"Cost", priceText(price)},
        {"Burn rate", burnRateText(usage.burnRateTokensPerMin)},
        {"Projected today", projectionText(usage, &UsageFigures::projectedTodayCost)},
        {"Projected week", projectionText(usage, &UsageFigures::projectedWeeklyCost)},
        {"Projected month", projectionText(usage, &UsageFigures::projectedMonthlyCost)}};
    table.figures(figures);
    if (price.unpriced > 0)
        table.line(table.dimmed(unpricedText(price) + ": counted, but not in the costs"));
}

void addActivity(Table &table, const std::map<LocalDay, std::int64_t> &activity, LocalDay today) {
    if (activity.empty())
        return;
    constexpr std::chrono::days fewest{7};
    constexpr std::chrono::days most{contentColumns};
    const std::chrono::days sinceFirst = today - activity.begin()->first + std::chrono::days(1);
    const int days = static_cast<int>(std::clamp(sinceFirst, fewest, most).count());
    const std::string line = sparkline(activity, today, days);
    if (line.empty())
        return;
    table.heading("Activity", "tokens a day, last " + std::to_string(days) + " days");
    table.line(line);
}

void addModels(Table &table, const std::vector<ModelStat> &models) {
    table.heading("Models", "share of input and output tokens");
    if (models.empty())
        return table.line("No model data yet");

    const std::span shown(models.data(), std::min(models.size(), mostModelsShown));
    std::vector<std::string> details;
    int detailColumns = 0;
    for (const ModelStat &model : shown) {
        details.push_back(tokenCountText(model.inputTokens) + " in · " + tokenCountText(model.outputTokens) +
                          " out");
        detailColumns = std::max(detailColumns, columnsOf(details.back()));
    }
    constexpr int percentColumns = 4;
    constexpr int between = 2;
    const int nameColumns = contentColumns - percentColumns - shareBarColumns - detailColumns - 3 * between;
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const std::string name = elidedInMiddle(printableText(shown[i].name), std::max(nameColumns, 8));
        table.line(leftAligned(name, nameColumns) + "  " +
                   rightAligned(percentText(shown[i].percentage), percentColumns) + "  " +
                   percentageBar(shown[i].percentage, shareBarColumns) + "  " +
                   table.dimmed(rightAligned(details[i], detailColumns)));
    }
    if (shown.size() < models.size())
        table.line(table.dimmed("and " + std::to_string(models.size() - shown.size()) + " more"));
}

void addUsage(Table &table, std::string_view label, double percentage, const std::string &detail) {
    constexpr int percentColumns = 6;
    constexpr int detailColumns = contentColumns - labelColumns - percentColumns - usageBarColumns - 4;
    const std::string percent = elidedInMiddle(percentText(percentage), percentColumns);
    std::string line = table.dimmed(leftAligned(label, labelColumns)) +
                       rightAligned(percent, percentColumns) + "  " +
                       percentageBar(percentage, usageBarColumns);
    if (!detail.empty())
        line += "  " + table.dimmed(elidedInMiddle(detail, detailColumns));
    table.line(line);
}

void addExtraUsage(Table &table, const ExtraUsageData &usage) {
    const std::string days =
        std::to_string(usage.daysUntilReset) + (usage.daysUntilReset == 1 ? " day" : " days");
    addUsage(table, "Extra usage", usage.dailySpendPct,
             costText(usage.dailySpend) + " · " +
                 (usage.daysUntilReset > 0 ? "resets in " + days : "resets today"));
    const StatFigure amounts[] = {{"Monthly limit", costText(usage.monthlyLimit)},
                                  {"Current balance", costText(usage.currentBalance)}};
    table.figures(amounts);
}

void addClaudeStatus(Table &table, const AccountFigures &account) {
    constexpr int nameColumns = labelColumns + valueColumns;
    table.heading("Claude status", account.claudeStatusReadAt ? "" : "not known");
    for (const ClaudeComponentStatus &component : account.claudeStatus) {
        const std::string name = elidedInMiddle(printableText(component.name), nameColumns);
        table.line(table.dimmed(leftAligned(name, nameColumns)) + "  " +
                   std::string(wordFor(component.status)));
    }
}

std::string limitLabel(const Limit &limit) {
    return elidedInMiddle(printableText(limitName(limit)), labelColumns - 1);
}

/// Adds the sentence of each limit, and the detail where both fit into the line.
void addForecasts(Table &table, const UsageFigures &usage, Instant now) {
    constexpr int sentenceColumns = contentColumns - labelColumns;
    for (const LimitCourse &course : usage.limitCourses) {
        const LimitWords words = limitWords(course, forecastOf(course, now), usage.calendar, now);
        std::string line = table.dimmed(leftAligned(limitLabel(course.limit), labelColumns)) +
                           elidedInMiddle(printableText(words.sentence), sentenceColumns);
        const std::string detail = words.detail.empty() ? "" : " · " + words.detail;
        if (columnsOf(words.sentence) + columnsOf(detail) <= sentenceColumns)
            line += table.dimmed(detail);
        table.line(line);
    }
}

void addAccount(Table &table, const Snapshot &snapshot, Instant now) {
    const auto &[usage, account] = snapshot;
    const bool isAsked = account.oauthStatus != OAuthStatus::unknown;
    if (!isAsked && account.limits.empty())
        return;
    table.heading("Quota", isAsked ? nameOf(account.oauthStatus) : staleQuotaText(account, usage.calendar));
    const auto &quota = account.quotaData;
    if (quota) {
        addUsage(table, "Session", quota->fiveHourUsagePct, resetText(quota->fiveHourResetAt, now));
        addUsage(table, "Weekly", quota->sevenDayUsagePct, resetText(quota->sevenDayResetAt, now));
        addUsage(table, claudeDesign, quota->claudeDesignWeeklyPct,
                 resetText(quota->claudeDesignResetAt, now));
    } else if (isAsked) {
        table.line("No quota could be had");
    }
    for (const Limit &limit : account.limits) {
        if (!quota || (limit.kind == Limit::Kind::weeklyScoped && limit.model != claudeDesign))
            addUsage(table, limitLabel(limit), limit.usedPct, resetText(limit.resetsAt, now));
    }
    addForecasts(table, usage, now);
    if (account.extraUsage)
        addExtraUsage(table, *account.extraUsage);
    if (isAsked)
        addClaudeStatus(table, account);
}

} // namespace

std::string tableForm(const Snapshot &snapshot, Instant now, TerminalColors colors) {
    const UsageFigures &usage = snapshot.usage;
    const HistoricalData &history = usage.historicalData;
    Table table(colors);
    addSession(table, usage);
    addAccount(table, snapshot, now);
    table.heading("History", periodText(usage.timeFilter));
    table.figures(statFigures(history, shownCost(usage)));
    addActivity(table, history.dailyActivity, usage.calendar.dayOf(now));
    addModels(table, history.modelStats);
    return titleLine(snapshot, colors) + std::move(table).take();
}

} // namespace burnwick
