// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/statusitem/StatusItemToolTip.h"

#include "display/DisplayFormat.h"

namespace burnwick {

namespace {

using Markup = TrayHost::Markup;

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

QString lineBreak(Markup markup) {
    switch (markup) {
    case Markup::qtText:
        return QStringLiteral("<br/>");
    case Markup::pango:
        return QStringLiteral("\n");
    case Markup::plain:
        break;
    }
    return QStringLiteral(" · ");
}

QString quotaInWords(const StatusItemContent &content) {
    if (!content.fiveHourUsagePct)
        return QStringLiteral("5-hour window not known yet");
    const std::string_view color = nameOf(content.indicator);
    return QStringLiteral("%1 of the 5-hour window used (%2)")
        .arg(QString::fromStdString(percentText(*content.fiveHourUsagePct)),
             QLatin1String(color.data(), static_cast<qsizetype>(color.size())));
}

} // namespace

QString toolTipBody(const StatusItemContent &content, TrayHost::Markup markup) {
    QString body;
    for (const TitleSegment &segment : content.title)
        body += styled(segment, markup);
    return body + lineBreak(markup) + quotaInWords(content);
}

} // namespace burnwick
