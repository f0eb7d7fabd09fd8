// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Snapshot.h"
#include "ui/charts/DailyActivity.h"

#include <QAbstractTableModel>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace burnwick {

/// The projects of the history, a row each. Paths are untrusted; all texts are safe for display. Costs are at
/// API prices; tokens are those of the user's choice. Main thread only.
class ProjectsModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { project, tokensPerDay, cost, tokens, sessions, lastUsed };
    static constexpr int columns = lastUsed + 1;

    /// The sums of all rows.
    struct Totals {
        PricedTokens priced{};
        std::int64_t tokens = 0; ///< of the user's choice
        std::int64_t sessions = 0;
        std::vector<std::int64_t> days; ///< the tokens of each of the days that sparklines show
    };

    /// Paths below `home` begin with "~".
    explicit ProjectsModel(std::string home);

    /// Shows these figures in the present order. Selections and persistent indexes follow their projects.
    void setFigures(const UsageFigures &usage, Instant now);

    [[nodiscard]] const ProjectUsage &projectAt(int row) const;
    /// Returns null for tokens without a price.
    [[nodiscard]] std::optional<double> costAt(int row) const;
    /// Returns the share of all costs in percent.
    [[nodiscard]] double shareAt(int row) const;
    /// Returns the tokens of each of the days that sparklines show, from the oldest to today.
    [[nodiscard]] std::vector<std::int64_t> dayCountsAt(int row) const;
    [[nodiscard]] const Totals &totals() const { return m_totals; }
    [[nodiscard]] TimeFilter timeFilter() const { return m_filter; }
    /// Returns the folder's path below "~", or the whole one; empty if it is unknown.
    [[nodiscard]] QString pathText(int row) const;

    /// Returns a line of heads and a line for each of the rows, with tabs between the columns; exact figures,
    /// whole paths and the local time.
    [[nodiscard]] QString tabSeparated(const std::vector<int> &rows) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Equal rows are in the order of their paths. Rows without a price or a time are last in both orders.
    void sort(int column, Qt::SortOrder order) override;

private:
    struct Key;
    [[nodiscard]] std::int64_t tokensOf(const ProjectUsage &usage) const;
    [[nodiscard]] std::vector<std::int64_t> noDays() const;
    void addDays(std::vector<std::int64_t> &counts, const ProjectUsage &usage) const;
    [[nodiscard]] DailyActivity activityOf(const ProjectUsage &usage) const;
    [[nodiscard]] Key keyOf(const ProjectUsage &usage) const;
    [[nodiscard]] QString textAt(int row, int column) const;
    [[nodiscard]] QString spokenAt(int row, int column) const;
    [[nodiscard]] QString tipAt(int row, int column) const;
    void replaceRows(std::shared_ptr<const UsageBreakdown> breakdown);
    void reorder(std::vector<std::size_t> order);
    void sortRows();
    void addUp();

    std::string m_home;
    std::shared_ptr<const UsageBreakdown> m_breakdown; ///< never null
    std::vector<std::size_t> m_order;                  ///< of each row: its index among the projects
    FigureChoice m_choice = FigureChoice::asLogged;
    TimeFilter m_filter = TimeFilter::all;
    std::optional<Calendar> m_calendar; ///< absent before the first figures
    Instant m_now{};
    LocalDay m_today{};
    Totals m_totals{};
    int m_sortColumn = cost;
    Qt::SortOrder m_sortOrder = Qt::DescendingOrder;
};

} // namespace burnwick
