// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/charts/LimitChartLayout.h"
#include "ui/charts/PointableChart.h"

namespace burnwick {

/// A limit's window: its measured use, its forecast and the use at an even pace. The pointer and the arrow
/// keys read any time; Home and End, the first and the last. The caller sets the accessible description.
class LimitChartView final : public PointableChart {
    Q_OBJECT

public:
    LimitChartView();

    /// Repaints.
    void setCourse(const LimitCourse &course, const Forecast &forecast, const Calendar &calendar,
                   Instant now);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    [[nodiscard]] std::optional<std::size_t> partAt(QPointF point) const override;
    [[nodiscard]] QRect zoneOf(std::size_t part) const override;
    [[nodiscard]] QString tipOf(std::size_t part) const override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    struct Shown {
        LimitCourse course;
        Forecast forecast;
        Calendar calendar;
        Instant now;
    };
    void layOut() override;
    [[nodiscard]] LimitChartFonts fonts() const;
    void nameChart();
    [[nodiscard]] std::optional<std::size_t> nextStep(std::optional<std::size_t> from, int direction) const;

    std::optional<Shown> m_shown; ///< absent before the first call of setCourse()
    LimitChartLayout m_layout;
};

} // namespace burnwick
