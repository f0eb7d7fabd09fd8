// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/charts/HeatmapLayout.h"
#include "ui/charts/PointableChart.h"

namespace burnwick {

/// The days of the last weeks in colours by activity, in a widget of fixed size.
class ActivityHeatmapView final : public PointableChart {
    Q_OBJECT

public:
    explicit ActivityHeatmapView(const HeatmapMeasures &measures);

    /// Shows the days up to today; `first` is the first day of the filter's period, whose earlier days are
    /// unknown. Repaints only for other values.
    void setActivity(const DailyActivity &activity, LocalDay today, std::optional<LocalDay> first = {});

protected:
    [[nodiscard]] std::optional<std::size_t> partAt(QPointF point) const override;
    [[nodiscard]] QRect zoneOf(std::size_t part) const override;
    [[nodiscard]] QString tipOf(std::size_t part) const override;
    void paintEvent(QPaintEvent *event) override;

private:
    void layOut() override;

    DailyActivity m_activity;
    std::optional<LocalDay> m_first;
    std::optional<LocalDay> m_today; ///< absent before the first call of setActivity()
    HeatmapLayout m_layout;
};

} // namespace burnwick
