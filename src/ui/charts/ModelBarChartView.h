// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/charts/BarChartLayout.h"
#include "ui/charts/PointableChart.h"

namespace burnwick {

/// The tokens of each of the last days, as bars.
class ModelBarChartView final : public PointableChart {
    Q_OBJECT

public:
    explicit ModelBarChartView(QWidget *parent = nullptr);

    /// Today is the last bar. Repaints only when the values differ.
    void setActivity(const DailyActivity &activity, LocalDay today);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    [[nodiscard]] std::optional<std::size_t> partAt(QPointF point) const override;
    [[nodiscard]] QRect zoneOf(std::size_t part) const override;
    [[nodiscard]] QString tipOf(std::size_t part) const override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void layOut();

    DailyActivity m_activity;
    std::optional<LocalDay> m_today; ///< nothing is shown before it is known
    BarChartLayout m_layout;
};

} // namespace burnwick
