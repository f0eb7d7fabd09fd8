// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "display/StatFigures.h"
#include "model/Calendar.h"
#include "model/Snapshot.h"

#include <QWidget>

#include <array>
#include <optional>
#include <tuple>
#include <vector>

class QVBoxLayout;

namespace burnwick {

class ActivityHeatmapView;
class LimitsCard;
class ModelBarChartView;
class ModelStatRowView;
class PanelCard;
class StatTile;

/// The figures of the history, its heatmap, and the account's limits.
class OverviewTab final : public QWidget {
    Q_OBJECT

public:
    OverviewTab();

    /// `first` is the first day of the history's period.
    void setValues(const UsageFigures &usage, LocalDay today, std::optional<LocalDay> first);
    /// Shows the limits below the heatmap, and lower tiles; neither without courses that exist or are
    /// awaited.
    void setLimits(const std::vector<LimitCourse> &courses, bool areAwaited, const Calendar &calendar,
                   Instant now);
    /// Reduces the height of the tiles, for low screens.
    void setDense(bool dense);
    /// Adds a line at the bottom of the heatmap's card. It takes its room from the card's free space, or from
    /// the limits, and moves nothing else.
    void addNote(QWidget *note);

    [[nodiscard]] QSize sizeHint() const override;

private:
    void fitTiles(bool besideLimits);

    std::array<StatTile *, std::tuple_size_v<decltype(statFigures({}, 0))>> m_tiles{};
    ActivityHeatmapView *m_heatmap;
    PanelCard *m_activity;
    LimitsCard *m_limits;
    bool m_dense = false;
    QVBoxLayout *m_notes; ///< in the lower half of the card's free space
};

/// The models' shares of the tokens, and the tokens of each day.
class ModelsTab final : public QWidget {
    Q_OBJECT

public:
    ModelsTab();

    /// Costs are those of the usage with the model's name; `usage` is in the order of names.
    void setValues(const HistoricalData &history, const std::vector<ModelUsage> &usage, LocalDay today);
    /// Reduces the height of the list of models, for low screens.
    void setDense(bool dense);

private:
    class RowsArea;

    PanelCard *m_noData;
    PanelCard *m_models;
    RowsArea *m_rowsArea;
    QVBoxLayout *m_rowColumn;
    std::vector<ModelStatRowView *> m_rows;
    PanelCard *m_chartCard;
    ModelBarChartView *m_chart;
};

} // namespace burnwick
