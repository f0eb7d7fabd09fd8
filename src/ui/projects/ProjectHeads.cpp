// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/projects/ProjectHeads.h"

#include "ui/projects/ProjectPainter.h"
#include "ui/text/Text.h"
#include "ui/theme/TextStyle.h"
#include "ui/theme/ThemeColors.h"

#include <QAbstractItemModel>
#include <QKeyEvent>
#include <QPainter>

namespace burnwick {

namespace {

constexpr int headsHeight = 36; // of the card's top edge and the heads
constexpr double arrowWidth = 7;
constexpr double arrowHeight = 7;
constexpr double arrowGap = 4;

void drawArrow(QPainter &painter, const QRectF &area, bool isUp, const QColor &color) {
    const double x = area.center().x();
    const double tip = isUp ? area.top() : area.bottom();
    const double end = isUp ? area.bottom() : area.top();
    const double wing = isUp ? tip + 3 : tip - 3;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawLine(QPointF(x, end), QPointF(x, tip));
    painter.drawPolyline(QPolygonF({{x - 2.5, wing}, {x, tip}, {x + 2.5, wing}}));
}

} // namespace

ProjectHead::ProjectHead(const QString &text, Qt::Alignment alignment)
    : m_alignment(alignment) {
    setText(text);
    setFont(fontOf(TextStyle::small));
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus);
}

void ProjectHead::setSorted(bool isSorted, Qt::SortOrder order) {
    m_isSorted = isSorted;
    m_order = order;
    const QString description = !isSorted                     ? QStringLiteral("Sorts the projects")
                                : order == Qt::AscendingOrder ? QStringLiteral("Sorted, lowest first")
                                                              : QStringLiteral("Sorted, highest first");
    const QString note = toolTip().isEmpty() ? QString() : property("note").toString() + QStringLiteral(". ");
    setAccessibleDescription(note + description);
    update();
}

QSize ProjectHead::sizeHint() const {
    return fontMetrics().size(Qt::TextSingleLine, text());
}

void ProjectHead::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void ProjectHead::paintEvent(QPaintEvent *) {
    const ThemeColors &colors = colorsFor(*this);
    QPainter painter(this);
    QFont shown = font();
    if (m_isSorted)
        shown.setWeight(QFont::Medium);
    const QColor &color = m_isSorted || underMouse() ? colors.text : colors.secondary;
    painter.setFont(shown);
    painter.setPen(color);
    QRectF area = rect();
    if (m_isSorted) {
        const double textWidth = QFontMetricsF(shown).horizontalAdvance(text());
        const double arrow = m_alignment.testFlag(Qt::AlignRight) ? area.right() - arrowWidth
                                                                  : area.left() + textWidth + arrowGap;
        drawArrow(painter, {arrow, area.center().y() - arrowHeight / 2, arrowWidth, arrowHeight},
                  m_order == Qt::AscendingOrder, color);
        if (m_alignment.testFlag(Qt::AlignRight))
            area.setRight(arrow - arrowGap);
    }
    painter.setPen(color);
    painter.drawText(area, static_cast<int>(m_alignment | Qt::AlignVCenter) | Qt::TextSingleLine, text());
}

ProjectHeads::ProjectHeads(QAbstractItemModel &model)
    : m_model(model) {
    setFixedHeight(headsHeight);
    for (int column = 0; column < model.columnCount(); ++column) {
        const auto read = [&model, column](int role) {
            return model.headerData(column, Qt::Horizontal, role);
        };
        auto *head = new ProjectHead(read(Qt::DisplayRole).toString(), projectAlignment(column));
        head->setParent(this);
        constexpr int top = 13;
        constexpr int lineHeight = 18;
        head->setGeometry(projectColumnIn(QRectF(0, top, 0, lineHeight), column).toRect());
        if (const QString note = read(Qt::ToolTipRole).toString(); !note.isEmpty()) {
            head->setProperty("note", note);
            head->setToolTip(plainToolTip(note));
        }
        connect(head, &QAbstractButton::clicked, this, [this, read, column] {
            const bool isSorted = column == m_column;
            const auto first = read(Qt::InitialSortOrderRole).value<Qt::SortOrder>();
            const auto reverse = m_order == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
            sortBy(column, isSorted ? reverse : first);
        });
        m_heads.push_back(head);
    }
    sortBy(ProjectsModel::cost, Qt::DescendingOrder);
}

void ProjectHeads::paintEvent(QPaintEvent *) {
    const QRect line(projectsSidePadding, height() - 1, width() - 2 * projectsSidePadding, 1);
    QPainter(this).fillRect(line, colorsFor(*this).line);
}

void ProjectHeads::sortBy(int column, Qt::SortOrder order) {
    m_column = column;
    m_order = order;
    for (int i = 0; i < static_cast<int>(m_heads.size()); ++i)
        m_heads[static_cast<std::size_t>(i)]->setSorted(i == column, order);
    m_model.sort(column, order);
}

} // namespace burnwick
