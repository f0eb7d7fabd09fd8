// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/controls/FittedArea.h"

#include <QEvent>
#include <QLayout>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QWindow>

namespace burnwick {

namespace {

/// What the window manager puts around a window; it tells only once the window is there.
constexpr QSize frameRoom{8, 40};

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

QSize fittedSize(QSize wanted, QSize room, int scrollBar) {
    QSize size = wanted;
    if (wanted.height() > room.height())
        size.rwidth() += scrollBar;
    if (size.width() > room.width())
        size.rheight() += scrollBar;
    return size.boundedTo(room);
}

FittedArea::FittedArea(QWidget *content, QWidget *parent)
    : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    // The keyboard scrolls as it moves on to what is out of sight.
    setFocusPolicy(Qt::NoFocus);
    content->layout()->setSizeConstraint(QLayout::SetFixedSize);
    setWidget(content);
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
}

QSize FittedArea::sizeHint() const {
    return fittedSize(widget()->sizeHint(), screen()->availableGeometry().size() - frameRoom,
                      style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this));
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
    connect(window()->windowHandle(), &QWindow::screenChanged, this, &FittedArea::follow,
            Qt::UniqueConnection);
    follow(screen());
}

void FittedArea::follow(QScreen *screen) {
    if (m_screen == screen)
        return;
    if (m_screen)
        disconnect(m_screen, nullptr, this, nullptr);
    m_screen = screen;
    if (m_screen)
        connect(m_screen, &QScreen::availableGeometryChanged, this, &QWidget::updateGeometry);
    updateGeometry();
}

} // namespace burnwick
