// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QScrollArea>

namespace burnwick {

class ScreenRoom;

/// Sets the area's content and removes frame and background. The area itself takes no keyboard focus; it
/// scrolls when the focus moves to a hidden control.
void makeBare(QScrollArea &area, QWidget *content);

/// The same, with the content as wide as the area, which scrolls vertically only.
void makeColumn(QScrollArea &area, QWidget *content);

/// The whole content of a window with the content's size: its size hint is the content's, limited to the
/// screen. Scroll bars for the rest lie over the content's margins.
class FittedArea final : public QScrollArea {
    Q_OBJECT

public:
    /// The content has a layout, whose size hint becomes its fixed size.
    explicit FittedArea(QWidget *content);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] const ScreenRoom &room() const { return *m_room; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    ScreenRoom *m_room;
};

} // namespace burnwick
