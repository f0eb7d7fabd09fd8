// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/layout/ScrollAreas.h"

#include "ui/layout/ScreenRoom.h"
#include "ui/theme/QuietStyle.h"

#include <QEvent>
#include <QLayout>
#include <QScrollBar>

namespace burnwick {

namespace {

/// Qt updates a window's layouts when the window is shown, but not those within a scroll area, whose sizes
/// are from before the latest changes.
void updateLayouts(const QWidget &widget) {
    for (const QWidget *child : widget.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (!child->isHidden())
            updateLayouts(*child);
    }
    if (QLayout *layout = widget.layout()) {
        layout->invalidate();
        layout->activate();
    }
}

} // namespace

void makeBare(QScrollArea &area, QWidget *content) {
    area.setFrameShape(QFrame::NoFrame);
    area.setFocusPolicy(Qt::NoFocus);
    area.setWidget(content); // which sets autoFillBackground
    area.viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
}

void makeColumn(QScrollArea &area, QWidget *content) {
    makeBare(area, content);
    area.setWidgetResizable(true);
    area.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

FittedArea::FittedArea(QWidget *content)
    : m_room(new ScreenRoom(this)) {
    content->layout()->setSizeConstraint(QLayout::SetFixedSize);
    makeBare(*this, content);
    // A bar beside the content would make the other bar necessary.
    for (QScrollBar *bar : {horizontalScrollBar(), verticalScrollBar()})
        QuietStyle::layOverMargin(*bar);
    connect(m_room, &ScreenRoom::changed, this, &QWidget::updateGeometry);
}

QSize FittedArea::sizeHint() const {
    return widget()->sizeHint().boundedTo(m_room->size());
}

bool FittedArea::eventFilter(QObject *watched, QEvent *event) {
    const bool filtered = QScrollArea::eventFilter(watched, event);
    if (watched == widget() && event->type() == QEvent::Resize) {
        updateGeometry();
        // At once, because Qt would paint the window with scroll bars first.
        if (QLayout *layout = parentWidget() ? parentWidget()->layout() : nullptr)
            layout->activate();
    }
    return filtered;
}

void FittedArea::showEvent(QShowEvent *event) {
    updateLayouts(*widget());
    QScrollArea::showEvent(event);
}

} // namespace burnwick
