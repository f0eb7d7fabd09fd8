// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/projects/ProjectTotalRow.h"

#include "display/DisplayFormat.h"
#include "display/PriceText.h"
#include "ui/controls/AccessibleRole.h"
#include "ui/projects/ProjectPainter.h"
#include "ui/text/Text.h"
#include "ui/theme/ThemeColors.h"

#include <QPainter>

namespace burnwick {

ProjectTotalRow::ProjectTotalRow(const ProjectsModel &model)
    : m_model(model) {
    constexpr int height = 52;
    setFixedHeight(height);
    setAccessibleRole(*this, QAccessible::Grouping);
    follow();
}

void ProjectTotalRow::follow() {
    const ProjectsModel::Totals &totals = m_model.totals();
    m_note = textOf(countText(m_model.rowCount(), "project"));
    if (totals.priced.unpriced > 0)
        m_note += QStringLiteral(" · %1 with no price").arg(textOf(tokenCountText(totals.priced.unpriced)));
    setAccessibleName(QStringLiteral("Total: %1, %2, %3, %4")
                          .arg(m_note, textOf(priceText(totals.priced)), roundedTokensText(totals.tokens),
                               textOf(countText(totals.sessions, "session"))));
    update();
}

void ProjectTotalRow::paintEvent(QPaintEvent *) {
    const ThemeColors &colors = colorsFor(*this);
    const ProjectsModel::Totals &totals = m_model.totals();
    const auto column = [row = QRectF(rect())](int index) { return projectColumnIn(row, index); };
    QPainter painter(this);
    painter.fillRect(QRect(projectsSidePadding, 0, width() - 2 * projectsSidePadding, 1), colors.line);
    drawProjectName(painter, column(ProjectsModel::project), QStringLiteral("Total"), m_note, true, colors);
    drawSparkline(painter, column(ProjectsModel::tokensPerDay), totals.days,
                  sparklineMeasures(m_model.timeFilter()), colors);
    drawTotalCost(painter, column(ProjectsModel::cost), totals.priced, colors);
    drawProjectFigure(painter, column(ProjectsModel::tokens), textOf(tokenCountText(totals.tokens)), colors);
    drawProjectFigure(painter, column(ProjectsModel::sessions), QString::number(totals.sessions), colors);
}

} // namespace burnwick
