// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>

namespace burnwick {

/// A ring around the window's focused control, visible only after the keyboard moved the focus. The control's
/// property "radius" is its corner radius.
class FocusRing final : public QWidget {
    Q_OBJECT

public:
    /// The window becomes the ring's parent.
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
