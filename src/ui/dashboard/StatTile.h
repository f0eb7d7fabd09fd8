// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace burnwick {

class TextLabel;

/// A figure of the dashboard with its label, both plain text.
class StatTile final : public QWidget {
    Q_OBJECT

public:
    /// The round corners.
    struct Corners {
        bool topLeft = false;
        bool topRight = false;
        bool bottomLeft = false;
        bool bottomRight = false;
    };

    StatTile(const QString &label, Corners corners);

    /// Repaints only for another text.
    void setValue(const QString &value);
    /// Reduces the height, for low screens.
    void setDense(bool dense);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Corners m_corners;
    QString m_label;
    TextLabel *m_value;
};

} // namespace burnwick
