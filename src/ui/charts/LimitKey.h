// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "display/LimitText.h"

#include <QWidget>

#include <vector>

namespace burnwick {

/// A line of a limit chart and its present value.
struct LimitKeyRow {
    enum class Line { measured, forecast, evenPace };
    Line line;
    QString label;
    QString value;

    bool operator==(const LimitKeyRow &) const = default;
};

/// The lines of a limit chart, with names and values.
class LimitKey final : public QWidget {
    Q_OBJECT

public:
    LimitKey();

    /// The forecast has the colour of the tone. Repaints only for other values.
    void setRows(const std::vector<LimitKeyRow> &rows, LimitWords::Tone tone);
    /// Reduces the height, for low screens.
    void setDense(bool dense);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    std::vector<LimitKeyRow> m_rows;
    LimitWords::Tone m_tone = LimitWords::Tone::calm;
    int m_rowHeight = 18;
};

} // namespace burnwick
