// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QRect>

class QScreen;
class QWidget;

namespace burnwick {

/// The area for a window's content on the screen: without panels, and without the window's frame.
[[nodiscard]] QRect roomOn(const QScreen &screen);

/// The room for a window's content on the window's current screen. Child object of any widget in the window.
/// Main thread only.
class ScreenRoom final : public QObject {
    Q_OBJECT

public:
    explicit ScreenRoom(QWidget *widget);

    /// In device-independent pixels.
    [[nodiscard]] QSize size() const;

Q_SIGNALS:
    /// Emitted before the widget is first shown, and when the screen or its available area changes.
    void changed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void follow(QScreen *screen);

    QWidget *m_widget;
    QPointer<QScreen> m_screen;
};

} // namespace burnwick
