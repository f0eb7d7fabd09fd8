// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/theme/QuietStyle.h"

#include "ui/theme/ThemeColors.h"

#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QStyleOptionSlider>

#include <algorithm>

namespace burnwick {

namespace {

constexpr int barExtent = 14; // handle and the space between it and the content
constexpr int handleWidth = 5;
constexpr int overMarginInset = 4; // between the handle and the area's edges
constexpr int shortestHandle = 24;
constexpr const char *overMarginProperty = "_burnwick_overMargin";

/// A part of the bar, from its start, in pixels.
struct Span {
    int from;
    int length;
};

bool liesOverMargin(const QWidget *bar) {
    return bar != nullptr && bar->property(overMarginProperty).toBool();
}

/// The range of the handle.
Span wayOf(const QStyleOptionSlider &bar, const QWidget *widget) {
    const int whole = bar.orientation == Qt::Vertical ? bar.rect.height() : bar.rect.width();
    const int inset = liesOverMargin(widget) ? overMarginInset : 0;
    return {inset, std::max(0, whole - 2 * inset)};
}

Span handleOf(const QStyleOptionSlider &bar, const QWidget *widget) {
    const auto [from, room] = wayOf(bar, widget);
    const qint64 range = qint64(bar.maximum) - bar.minimum;
    const qint64 whole = range + bar.pageStep;
    if (range <= 0 || whole <= 0)
        return {from, room};
    const int length =
        std::min(room, std::max(shortestHandle, static_cast<int>(qint64(room) * bar.pageStep / whole)));
    return {from + QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                   room - length, bar.upsideDown),
            length};
}

QRect alongBar(const QStyleOptionSlider &bar, Span span) {
    const QRect &area = bar.rect;
    return bar.orientation == Qt::Vertical
               ? QRect(area.x(), area.y() + span.from, area.width(), span.length)
               : QRect(area.x() + span.from, area.y(), span.length, area.height());
}

constexpr int menuRadius = 8;
constexpr int menuMargin = 4;
constexpr QSize menuItemPadding{10, 5};
constexpr int markWidth = 10;
constexpr int markSpacing = 16; // the least between an entry's text and its mark
constexpr int separatorHeight = 9;

const ThemeColors &colorsOfOption(const QStyleOption &option) {
    return colorsOf(schemeOf(option.palette));
}

} // namespace

QuietStyle::QuietStyle()
    : QProxyStyle(QStringLiteral("Fusion")) {}

void QuietStyle::layOverMargin(QScrollBar &bar) {
    bar.setProperty(overMarginProperty, true);
}

int QuietStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const {
    if (metric == PM_ScrollBarExtent)
        return barExtent;
    if (metric == PM_MenuHMargin || metric == PM_MenuVMargin)
        return menuMargin;
    if (metric == PM_ScrollView_ScrollBarOverlap && liesOverMargin(widget))
        return barExtent;
    return QProxyStyle::pixelMetric(metric, option, widget);
}

QRect QuietStyle::subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                                 const QWidget *widget) const {
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control != CC_ScrollBar || bar == nullptr)
        return QProxyStyle::subControlRect(control, option, part, widget);
    const Span way = wayOf(*bar, widget);
    const Span handle = handleOf(*bar, widget);
    const int end = handle.from + handle.length;
    switch (part) {
    case SC_ScrollBarGroove:
        return alongBar(*bar, way);
    case SC_ScrollBarSlider:
        return alongBar(*bar, handle);
    case SC_ScrollBarSubPage:
        return alongBar(*bar, {way.from, handle.from - way.from});
    case SC_ScrollBarAddPage:
        return alongBar(*bar, {end, way.from + way.length - end});
    default:
        return {};
    }
}

void QuietStyle::polish(QWidget *widget) {
    QProxyStyle::polish(widget);
    // For smooth corners with a compositor; without one the mask of SH_Menu_Mask cuts them.
    if (qobject_cast<QMenu *>(widget) != nullptr)
        widget->setAttribute(Qt::WA_TranslucentBackground);
}

int QuietStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                          QStyleHintReturn *data) const {
    auto *mask = hint == SH_Menu_Mask ? qstyleoption_cast<QStyleHintReturnMask *>(data) : nullptr;
    if (mask == nullptr || option == nullptr)
        return QProxyStyle::styleHint(hint, option, widget, data);
    QPainterPath outline;
    outline.addRoundedRect(option->rect, menuRadius, menuRadius);
    mask->region = QRegion(outline.toFillPolygon().toPolygon());
    return true;
}

QSize QuietStyle::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                                   const QWidget *widget) const {
    const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
    if (type != CT_MenuItem || item == nullptr)
        return QProxyStyle::sizeFromContents(type, option, size, widget);
    if (item->menuItemType == QStyleOptionMenuItem::Separator)
        return {size.width(), separatorHeight};
    const QSize text = item->fontMetrics.size(Qt::TextSingleLine | Qt::TextShowMnemonic, item->text);
    return text + 2 * menuItemPadding + QSize(markSpacing + markWidth, 0);
}

void QuietStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                             const QWidget *widget) const {
    const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
    if (element == CE_MenuEmptyArea)
        return;
    if (element != CE_MenuItem || item == nullptr) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    const ThemeColors &colors = colorsOfOption(*option);
    const QRect area = item->rect;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (item->menuItemType == QStyleOptionMenuItem::Separator) {
        painter->fillRect(area.x(), area.center().y(), area.width(), 1, colors.line);
    } else {
        if (item->state.testFlag(State_Selected)) {
            fillRounded(*painter, area, menuRadius - menuMargin + 1, colors.hover);
        }
        const QRect inner = area.adjusted(menuItemPadding.width(), 0, -menuItemPadding.width(), 0);
        painter->setFont(item->font);
        painter->setPen(item->state.testFlag(State_Enabled) ? colors.text : colors.tertiary);
        painter->drawText(inner, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextShowMnemonic,
                          item->text);
        if (item->checked) {
            const QPointF end(inner.right() + 1, inner.center().y() + 0.5);
            painter->setPen(QPen(colors.text, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter->drawPolyline(
                QPolygonF({end + QPointF(-markWidth + 1, 0), end + QPointF(-6, 3), end + QPointF(-1, -3.5)}));
        }
    }
    painter->restore();
}

void QuietStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                    QPainter *painter, const QWidget *widget) const {
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control != CC_ScrollBar || bar == nullptr) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    const bool held = bar->state.testFlag(State_Sunken) && bar->activeSubControls == SC_ScrollBarSlider;
    const bool pointed = bar->state.testFlag(State_MouseOver);
    QRect handle = alongBar(*bar, handleOf(*bar, widget));
    const int inset = liesOverMargin(widget) ? overMarginInset : 0;
    if (bar->orientation == Qt::Horizontal)
        handle = {handle.x(), handle.bottom() + 1 - inset - handleWidth, handle.width(), handleWidth};
    else if (bar->direction == Qt::RightToLeft)
        handle = {handle.x() + inset, handle.y(), handleWidth, handle.height()};
    else
        handle = {handle.right() + 1 - inset - handleWidth, handle.y(), handleWidth, handle.height()};
    painter->save();
    fillRounded(*painter, handle, handleWidth / 2.0,
                withOpacity(colorsOfOption(*option).text, held      ? 0.45
                                                          : pointed ? 0.35
                                                                    : 0.2));
    painter->restore();
}

void QuietStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                               const QWidget *widget) const {
    if (element == PE_FrameMenu)
        return; // drawn with the panel
    if (element != PE_PanelTipLabel && element != PE_PanelMenu) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    const ThemeColors &colors = colorsOfOption(*option);
    const int radius = element == PE_PanelMenu ? menuRadius : 0;
    const QRectF outline = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    // Stronger than ThemeColors::line, because the window below may have the same colour.
    painter->setPen(withOpacity(colors.text, 0.2));
    painter->setBrush(colors.card);
    painter->drawRoundedRect(outline, radius, radius);
    painter->restore();
}

} // namespace burnwick
