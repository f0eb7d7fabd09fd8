// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace burnwick {

class TextLabel;

/// A figure of the dashboard with its label, both plain text. The caller sets the height.
class StatTile final : public QWidget {
    Q_OBJECT

public:
    /// Corners between two of the `outer` edges are round, the others square.
    StatTile(const QString &label, Qt::Edges outer);

    /// Repaints only for another text.
    void setValue(const QString &value);
    /// Sets the tool tip and the accessible description.
    void setNote(const QString &note);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Qt::Edges m_outer;
    QString m_label;
    TextLabel *m_value;
};

} // namespace burnwick
