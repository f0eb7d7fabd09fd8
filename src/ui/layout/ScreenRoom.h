// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QRect>

class QScreen;
class QWidget;

namespace burnwick {

/// Where on that screen the content of a window can be: what panels leave free, without the room for the
/// window's frame.
[[nodiscard]] QRect roomOn(const QScreen &screen);

/// The room for a window's content on the screen that the window is on. Belongs to the widget, which is
/// anywhere in the window. Main thread only.
class ScreenRoom final : public QObject {
    Q_OBJECT

public:
    explicit ScreenRoom(QWidget *widget);

    /// In device-independent pixels.
    [[nodiscard]] QSize size() const;

Q_SIGNALS:
    /// Emitted before the widget is first shown, and whenever the screen or the free part of it is another.
    void changed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void follow(QScreen *screen);

    QWidget *m_widget;
    QPointer<QScreen> m_screen;
};

} // namespace burnwick
