// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/statusitem/NotifierState.h"

#include "display/DisplayFormat.h"
#include "platform/linux/statusitem/StatusItemPainting.h"

#include <QtCore/QtEndian>

#include <algorithm>

namespace burnwick {

namespace {

using Presentation = TrayHost::Presentation;
using Markup = TrayHost::Markup;

NotifierPixmaps squareIcons(StatusIndicator indicator, const QString &text) {
    NotifierPixmaps icons;
    for (const int size : statusIconSizes)
        icons.append(toNotifierPixmap(paintSquareIcon(indicator, text, size)));
    return icons;
}

NotifierPixmaps iconFor(const StatusItemContent &content, Presentation presentation) {
    if (presentation == Presentation::wide) {
        // Bars scale the largest picture down to their height. This one is sharp up to a scale of 3.
        constexpr int scale = 3;
        return {toNotifierPixmap(paintWideTitle(content.title, scale))};
    }
    return squareIcons(content.indicator, presentation == Presentation::compact
                                              ? compactQuotaText(content.fiveHourUsagePct)
                                              : QString());
}

/// Leaves the coloured dot out: hosts draw a label in one colour, and the icon has the dot.
QString labelText(const StatusTitle &title) {
    QString text;
    for (const TitleSegment &segment : title) {
        if (!segment.color)
            text += QString::fromStdString(segment.text);
    }
    return text.trimmed();
}

QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString styled(const TitleSegment &segment, Markup markup) {
    QString text = QString::fromStdString(segment.text).toHtmlEscaped();
    if (markup == Markup::plain)
        return text;
    if (segment.color) {
        const QString element = markup == Markup::qtText
                                    ? QStringLiteral("<font color=\"%1\">%2</font>")
                                    : QStringLiteral("<span foreground=\"%1\">%2</span>");
        return element.arg(QString::fromStdString(hexOf(*segment.color)), text);
    }
    if (segment.weight != TitleSegment::Weight::regular && !segment.dimmed)
        return QStringLiteral("<b>%1</b>").arg(text);
    return text;
}

QString quotaInWords(const StatusItemContent &content) {
    if (!content.fiveHourUsagePct)
        return QStringLiteral("5-hour window not known yet");
    return QStringLiteral("%1 of the 5-hour window used (%2)")
        .arg(QString::fromStdString(percentText(*content.fiveHourUsagePct)),
             toQString(nameOf(content.indicator)));
}

} // namespace

QString notifierMenuPath() {
    return QStringLiteral("/MenuBar");
}

QString accessibleDescriptionOf(const StatusItemContent &content) {
    return QStringLiteral("Burnwick: %1 (%2)")
        .arg(QString::fromStdString(plainText(content.title)), toQString(nameOf(content.indicator)));
}

QString iconNameFor(StatusIndicator indicator) {
    return QStringLiteral("burnwick-status-") + toQString(nameOf(indicator));
}

NotifierState notifierStateFor(const StatusItemContent &content, const TrayHost &host,
                               const QString &iconThemePath) {
    NotifierState state;
    state.title = QString::fromStdString(plainText(content.title));
    state.accessibleDescription = accessibleDescriptionOf(content);
    if (host.presentation == Presentation::label)
        state.label = labelText(content.title);
    if (host.iconsByName) {
        state.iconName = iconNameFor(content.indicator);
        state.iconThemePath = iconThemePath;
    }
    state.icon = iconFor(content, host.presentation);
    state.toolTip.title = QStringLiteral("Burnwick");
    state.toolTip.body = toolTipBody(content, host.markup);
    // Hosts read the second path as "no menu".
    state.menuPath = host.clickNeedsMenu ? notifierMenuPath() : QStringLiteral("/NO_DBUSMENU");
    return state;
}

QString toolTipBody(const StatusItemContent &content, Markup markup) {
    QString body;
    for (const TitleSegment &segment : content.title)
        body += styled(segment, markup);
    const QString lineBreak = markup == Markup::qtText  ? QStringLiteral("<br/>")
                              : markup == Markup::pango ? QStringLiteral("\n")
                                                        : QStringLiteral(" · ");
    const auto add = [&](const std::string &line) {
        body += lineBreak + QString::fromStdString(line).toHtmlEscaped();
    };
    if (content.limits.empty())
        body += lineBreak + quotaInWords(content);
    for (const LimitRow &row : content.limits)
        add(row.bar);
    std::ranges::for_each(content.remarks, add);
    return body;
}

NotifierPixmap toNotifierPixmap(const QImage &image) {
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    NotifierPixmap pixmap{argb.width(), argb.height(), QByteArray(argb.sizeInBytes(), Qt::Uninitialized)};
    qToBigEndian<quint32>(argb.constBits(), argb.sizeInBytes() / qsizetype{sizeof(quint32)},
                          pixmap.argb.data());
    return pixmap;
}

} // namespace burnwick
