// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>
#include <QWidget>

#include <cstddef>
#include <optional>

namespace burnwick {

/// A chart whose parts answer the pointer: the one below it stands out, and a tool tip says what it is.
class PointableChart : public QWidget {
    Q_OBJECT

public:
    explicit PointableChart(QWidget *parent = nullptr);

protected:
    /// The part that is to stand out.
    [[nodiscard]] std::optional<std::size_t> pointedPart() const { return m_pointed; }
    /// To be called when there are other parts, or the same elsewhere. Repaints.
    void partsChanged();

    [[nodiscard]] virtual std::optional<std::size_t> partAt(QPointF point) const = 0;
    /// All that is drawn in another way when the part stands out.
    [[nodiscard]] virtual QRect zoneOf(std::size_t part) const = 0;
    [[nodiscard]] virtual QString tipOf(std::size_t part) const = 0;

    void mouseMoveEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    void showToolTip();

    std::optional<QPointF> m_pointer;
    std::optional<std::size_t> m_pointed;
};

} // namespace burnwick
