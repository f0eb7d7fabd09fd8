// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/layout/FittedArea.h"

#include "ui/layout/BareArea.h"
#include "ui/layout/ScreenRoom.h"
#include "ui/theme/QuietStyle.h"

#include <QEvent>
#include <QLayout>
#include <QScrollBar>

namespace burnwick {

namespace {

/// A window that comes to be shown brings its layouts up to date, but not those within a scroll area: these
/// still have the sizes from before what was shown and hidden in the meantime.
void bringLayoutsUpToDate(const QWidget &widget) {
    for (const QWidget *child : widget.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (!child->isHidden())
            bringLayoutsUpToDate(*child);
    }
    if (QLayout *layout = widget.layout()) {
        layout->invalidate();
        layout->activate();
    }
}

} // namespace

FittedArea::FittedArea(QWidget *content, QWidget *parent)
    : QScrollArea(parent)
    , m_room(new ScreenRoom(this)) {
    content->layout()->setSizeConstraint(QLayout::SetFixedSize);
    makeBare(*this, content);
    // A bar that took room would ask for one in the other direction.
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
        // At once: by itself it would come after the next painting, with scroll bars in it.
        if (QLayout *layout = parentWidget() ? parentWidget()->layout() : nullptr)
            layout->activate();
    }
    return filtered;
}

void FittedArea::showEvent(QShowEvent *event) {
    bringLayoutsUpToDate(*widget());
    QScrollArea::showEvent(event);
}

} // namespace burnwick
