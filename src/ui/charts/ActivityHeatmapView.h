// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/charts/HeatmapLayout.h"
#include "ui/charts/PointableChart.h"

namespace burnwick {

/// The days of the last weeks, each in a colour that says how much was done. Of a fixed size.
class ActivityHeatmapView final : public PointableChart {
    Q_OBJECT

public:
    /// Of `weeks` columns; sizes in logical pixels.
    explicit ActivityHeatmapView(int cellSize, int gap, int weeks, QWidget *parent = nullptr);

    /// Today is the last cell. Of the days before the first one, if there is such, nothing is known: a filter
    /// leaves them out. Repaints only when the values differ.
    void setActivity(const DailyActivity &activity, LocalDay today, std::optional<LocalDay> first = {});

protected:
    [[nodiscard]] std::optional<std::size_t> partAt(QPointF point) const override;
    [[nodiscard]] QRect zoneOf(std::size_t part) const override;
    [[nodiscard]] QString tipOf(std::size_t part) const override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void showActivity();

    DailyActivity m_activity;
    std::optional<LocalDay> m_first;
    std::optional<LocalDay> m_today; ///< nothing is shown before it is known
    HeatmapLayout m_layout;
};

} // namespace burnwick
