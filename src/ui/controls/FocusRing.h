// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>

namespace burnwick {

/// A ring around the control of its window that has the keyboard, shown only where the focus was moved by
/// keyboard: a click tells by itself where it went. A control's property "radius" is that of its corners.
class FocusRing final : public QWidget {
    Q_OBJECT

public:
    /// For the controls of that window, which owns the ring.
    explicit FocusRing(QWidget *window);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void follow(QWidget *focused);
    void place();

    QPointer<QWidget> m_control;
};

} // namespace burnwick
