// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QScrollArea>

namespace burnwick {

class ScreenRoom;

/// The whole content of a window that wants to be as large as it is: its size hint is the content's, as far
/// as the screen has room for it. What does not fit is scrolled to, with bars in the content's margins.
class FittedArea final : public QScrollArea {
    Q_OBJECT

public:
    /// The content has a layout, and the size that this wants.
    explicit FittedArea(QWidget *content, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] const ScreenRoom &room() const { return *m_room; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    ScreenRoom *m_room;
};

} // namespace burnwick
