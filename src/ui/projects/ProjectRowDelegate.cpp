// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/projects/ProjectRowDelegate.h"

#include "ui/projects/ProjectPainter.h"
#include "ui/theme/ThemeColors.h"

#include <QPainter>

namespace burnwick {

ProjectRowDelegate::ProjectRowDelegate(const ProjectsModel &model)
    : m_model(model) {}

void ProjectRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                               const QModelIndex &index) const {
    const ThemeColors &colors = colorsOf(schemeOf(option.palette));
    const int row = index.row();
    const int column = index.column();
    const QRect cell = option.rect;
    painter->save();
    if (option.state.testFlag(QStyle::State_Selected))
        painter->fillRect(cell, colors.hover);
    const int left = column == 0 ? projectsSidePadding : 0;
    const int right = column == ProjectsModel::columns - 1 ? projectsSidePadding : 0;
    painter->fillRect(QRect(cell.left() + left, cell.bottom(), cell.width() - left - right, 1), colors.line);
    const QRectF whole(0, cell.top(), cell.width(), cell.height() - 1);
    const QRectF area(cell.left() + left, whole.top(), projectColumnIn(whole, column).width(),
                      whole.height());
    switch (column) {
    case ProjectsModel::tokensPerDay:
        drawSparkline(*painter, area, m_model.dayCountsAt(row), sparklineMeasures(m_model.timeFilter()),
                      colors);
        break;
    case ProjectsModel::cost:
        drawProjectCost(*painter, area, m_model.costAt(row), m_model.shareAt(row), colors);
        break;
    case ProjectsModel::tokens:
    case ProjectsModel::sessions:
        drawProjectFigure(*painter, area, index.data().toString(), colors);
        break;
    case ProjectsModel::lastUsed:
        drawProjectAge(*painter, area, index.data().toString(), colors);
        break;
    default:
        drawProjectName(*painter, area, index.data().toString(), m_model.pathText(row), false, colors);
        break;
    }
    painter->restore();
}

} // namespace burnwick
