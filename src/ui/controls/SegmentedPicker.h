// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QWidget>

class QButtonGroup;

namespace burnwick {

/// One choice of a few that are all seen, side by side on a track. One stop of the tab key; the arrow keys
/// choose. A group of radio buttons to assistive technology; whoever places it gives it a name.
class SegmentedPicker final : public QWidget {
    Q_OBJECT

public:
    /// The first one is chosen.
    explicit SegmentedPicker(const QStringList &labels, QWidget *parent = nullptr);

    [[nodiscard]] int chosen() const { return m_chosen; }
    /// Picks nothing: for showing what holds already.
    void setChosen(int index);

Q_SIGNALS:
    /// The user chose another one.
    void picked(int index);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void follow(int index);

    QButtonGroup *m_segments;
    int m_chosen = 0;
};

} // namespace burnwick
