// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/charts/BarChartLayout.h"
#include "ui/charts/PointableChart.h"

namespace burnwick {

/// The tokens of each of the last days as bars.
class ModelBarChartView final : public PointableChart {
    Q_OBJECT

public:
    ModelBarChartView();

    /// Today is the last bar. Repaints only for other values.
    void setActivity(const DailyActivity &activity, LocalDay today);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    [[nodiscard]] std::optional<std::size_t> partAt(QPointF point) const override;
    [[nodiscard]] QRect zoneOf(std::size_t part) const override;
    [[nodiscard]] QString tipOf(std::size_t part) const override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void layOut() override;

    DailyActivity m_activity;
    std::optional<LocalDay> m_today; ///< absent before the first call of setActivity()
    BarChartLayout m_layout;
};

} // namespace burnwick
