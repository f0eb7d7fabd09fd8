// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>
#include <QWidget>

#include <cstddef>
#include <optional>

namespace burnwick {

/// A chart that highlights the part under the pointer and shows its tool tip.
class PointableChart : public QWidget {
    Q_OBJECT

public:
    PointableChart();

protected:
    /// The highlighted part.
    [[nodiscard]] std::optional<std::size_t> pointedPart() const { return m_pointed; }
    /// Highlights that part, or none, and shows its tool tip, until the pointer moves.
    void point(std::optional<std::size_t> part);
    /// Repaints; the subclass calls it after its parts changed.
    void partsChanged();

    /// Called after the font changed.
    virtual void layOut() = 0;
    [[nodiscard]] virtual std::optional<std::size_t> partAt(QPointF point) const = 0;
    /// The area that the part's highlight changes.
    [[nodiscard]] virtual QRect zoneOf(std::size_t part) const = 0;
    [[nodiscard]] virtual QString tipOf(std::size_t part) const = 0;

    void changeEvent(QEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    bool highlight(std::optional<std::size_t> part);
    void showToolTip();

    std::optional<QPointF> m_pointer;
    std::optional<std::size_t> m_pointed;
};

} // namespace burnwick
