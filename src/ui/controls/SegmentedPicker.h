// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QWidget>

class QButtonGroup;

namespace burnwick {

/// Makes the checked button the group's only tab stop; the arrow keys move to the others. By default Qt's tab
/// stop is the first button. The group must have all its buttons, one of them checked.
void stopAtChosen(QButtonGroup &group);

/// Radio buttons as segments side by side, with one tab stop; the arrow keys choose. The caller sets the
/// accessible name.
class SegmentedPicker final : public QWidget {
    Q_OBJECT

public:
    /// Checks the first segment.
    explicit SegmentedPicker(const QStringList &labels);

    /// Checks a segment without emitting picked().
    void setChosen(int index);

Q_SIGNALS:
    /// Emitted when the user checks another segment.
    void picked(int index);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QButtonGroup *m_segments;
    int m_chosen = 0;
};

} // namespace burnwick
