// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

#include <utility>

namespace burnwick::test {

/// Counts the paint events of a widget and its children.
class PaintCount final : public QObject {
public:
    /// Shows the widget's window.
    explicit PaintCount(QWidget &widget) {
        widget.window()->show();
        settle();
        widget.installEventFilter(this);
        for (QWidget *child : widget.findChildren<QWidget *>())
            child->installEventFilter(this);
    }

    /// Returns the number of paint events since the last call or the construction.
    int take() {
        settle();
        return std::exchange(m_count, 0);
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override {
        m_count += event->type() == QEvent::Paint;
        return false;
    }

private:
    static void settle() {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }

    int m_count = 0;
};

} // namespace burnwick::test
