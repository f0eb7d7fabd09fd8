// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace burnwick {

class TextLabel;

/// A labelled figure of the dashboard. Its texts are plain text, whatever is in them.
class StatTile final : public QWidget {
    Q_OBJECT

public:
    /// Which of its corners are round.
    struct Corners {
        bool topLeft = false;
        bool topRight = false;
        bool bottomLeft = false;
        bool bottomRight = false;
    };

    StatTile(const QString &label, Corners corners, QWidget *parent = nullptr);

    /// Repaints only when the text differs.
    void setValue(const QString &value);
    /// Less high.
    void setDense(bool dense);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Corners m_corners;
    QString m_label;
    TextLabel *m_value;
};

} // namespace burnwick
