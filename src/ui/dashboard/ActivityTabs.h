// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "display/StatFigures.h"
#include "model/HistoricalData.h"

#include <QWidget>

#include <array>
#include <optional>
#include <tuple>
#include <vector>

class QVBoxLayout;

namespace burnwick {

class ActivityHeatmapView;
class ModelBarChartView;
class ModelStatRowView;
class StatTile;

/// The figures of the history and the days that they come from.
class OverviewTab final : public QWidget {
    Q_OBJECT

public:
    explicit OverviewTab(QWidget *parent = nullptr);

    /// The cost is the current session's, in dollars. The first day is the one with which the history's
    /// period begins, if it does.
    void setValues(const HistoricalData &history, double sessionCost, LocalDay today,
                   std::optional<LocalDay> first);

private:
    std::array<StatTile *, std::tuple_size_v<decltype(statFigures({}, 0))>> m_tiles{};
    ActivityHeatmapView *m_heatmap;
};

/// The models that were used, and how much on each day.
class ModelsTab final : public QWidget {
    Q_OBJECT

public:
    explicit ModelsTab(QWidget *parent = nullptr);

    void setValues(const HistoricalData &history, LocalDay today);
    /// Shows fewer models at a time.
    void setDense(bool dense);

private:
    class RowsArea;

    QWidget *m_noData;
    QWidget *m_models;
    RowsArea *m_rowsArea;
    QVBoxLayout *m_rowColumn;
    std::vector<ModelStatRowView *> m_rows;
    QWidget *m_chartCard;
    ModelBarChartView *m_chart;
};

} // namespace burnwick
