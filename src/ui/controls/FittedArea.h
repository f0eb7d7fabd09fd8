// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QScrollArea>

class QScreen;

namespace burnwick {

/// The whole content of a window that wants to be as large as it is: its size hint is the content's, as far
/// as the screen has room for it. What does not fit is scrolled to.
class FittedArea final : public QScrollArea {
    Q_OBJECT

public:
    /// The content has a layout, and the size that this wants.
    explicit FittedArea(QWidget *content, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void follow(QScreen *screen);

    QPointer<QScreen> m_screen;
};

/// How large a window's content shall be that wants to have that size and has so much room; with
/// `scrollBar`, where there is need for it.
[[nodiscard]] QSize fittedSize(QSize wanted, QSize room, int scrollBar);

} // namespace burnwick
