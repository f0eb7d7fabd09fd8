// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/projects/ProjectsTable.h"

#include "ui/projects/ProjectPainter.h"
#include "ui/projects/ProjectRowDelegate.h"
#include "ui/projects/ProjectsModel.h"
#include "ui/theme/QuietStyle.h"
#include "ui/theme/ThemeColors.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

namespace burnwick {

ProjectsTable::ProjectsTable(ProjectsModel &model) {
    constexpr int rowHeight = 61; // with the line below it
    setModel(&model);
    auto *delegate = new ProjectRowDelegate(model);
    delegate->setParent(this);
    setItemDelegate(delegate);
    setAccessibleName(QStringLiteral("Projects"));
    setAccessibleDescription(QStringLiteral("Return opens the folder, Ctrl+C copies the selected rows"));
    horizontalHeader()->hide();
    horizontalHeader()->setMinimumSectionSize(0);
    for (int column = 0; column < ProjectsModel::columns; ++column)
        horizontalHeader()->resizeSection(column, projectSectionWidth(column));
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(rowHeight);
    setShowGrid(false);
    QPalette colors;
    colors.setBrush(QPalette::Highlight, Qt::transparent); // the delegate paints the selection
    setPalette(colors);
    setFrameShape(QFrame::NoFrame);
    viewport()->setAutoFillBackground(false);
    setSelectionBehavior(SelectRows);
    setTabKeyNavigation(false);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalScrollBar()->setSingleStep(rowHeight / 2);
    QuietStyle::layOverMargin(*verticalScrollBar());
    connect(this, &QAbstractItemView::doubleClicked, this,
            [this](const QModelIndex &index) { Q_EMIT openRequested(index.row()); });
}

void ProjectsTable::currentChanged(const QModelIndex &current, const QModelIndex &previous) {
    QTableView::currentChanged(current, previous);
    viewport()->update(); // the outline of the whole row
}

/// Home and End are the first and the last row; a QTableView's are columns.
QModelIndex ProjectsTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if (action == MoveHome)
        return model()->index(0, 0);
    if (action == MoveEnd)
        return model()->index(model()->rowCount() - 1, 0);
    return QTableView::moveCursor(action, modifiers);
}

/// Outlines the current row while the keyboard moves in the table.
void ProjectsTable::paintEvent(QPaintEvent *event) {
    QTableView::paintEvent(event);
    if (!hasFocus() || !currentIndex().isValid() || !window()->testAttribute(Qt::WA_KeyboardFocusChange))
        return;
    const double inset = projectsSidePadding / 2.0;
    const QRectF row(0, rowViewportPosition(currentIndex().row()), viewport()->width(),
                     rowHeight(currentIndex().row()));
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colorsFor(*this).accent, 2));
    painter.drawRoundedRect(row.adjusted(inset, 2, -inset, -3), 6, 6);
}

void ProjectsTable::keyPressEvent(QKeyEvent *event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && currentIndex().isValid())
        Q_EMIT openRequested(currentIndex().row());
    else if (event->key() == Qt::Key_Escape)
        clearSelection();
    else
        QTableView::keyPressEvent(event);
}

} // namespace burnwick
