// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/statusitem/NotifierState.h"

#include "platform/linux/statusitem/StatusItemPainting.h"
#include "platform/linux/statusitem/StatusItemToolTip.h"

namespace burnwick {

namespace {

using Presentation = TrayHost::Presentation;

NotifierPixmaps squareIcons(StatusIndicator indicator, const QString &text) {
    NotifierPixmaps icons;
    for (const int size : statusIconSizes)
        icons.append(toNotifierPixmap(paintSquareIcon(indicator, text, size)));
    return icons;
}

NotifierPixmaps iconFor(const StatusItemContent &content, Presentation presentation) {
    switch (presentation) {
    case Presentation::wide: {
        // Bars take the largest picture and scale it down to their height: sharp up to three times.
        constexpr int scale = 3;
        return {toNotifierPixmap(paintWideTitle(content.title, scale))};
    }
    case Presentation::label:
        return squareIcons(content.indicator, {});
    case Presentation::compact:
        break;
    }
    return squareIcons(content.indicator, compactQuotaText(content.fiveHourUsagePct));
}

/// Hosts draw a label in one colour. The dot without its own would say nothing; it is on the icon instead.
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

} // namespace

QString notifierMenuPath() {
    return QStringLiteral("/MenuBar");
}

QString iconNameFor(StatusIndicator indicator) {
    return QStringLiteral("burnwick-status-") + toQString(nameOf(indicator));
}

NotifierState notifierStateFor(const StatusItemContent &content, const TrayHost &host,
                               const QString &iconThemePath) {
    NotifierState state;
    state.title = QString::fromStdString(plainText(content.title));
    state.accessibleDescription =
        QStringLiteral("Burnwick: %1 (%2)").arg(state.title, toQString(nameOf(content.indicator)));
    if (host.presentation == Presentation::label)
        state.label = labelText(content.title);
    if (host.iconsByName) {
        state.iconName = iconNameFor(content.indicator);
        state.iconThemePath = iconThemePath;
    }
    state.icon = iconFor(content, host.presentation);
    state.toolTip.title = QStringLiteral("Burnwick");
    state.toolTip.body = toolTipBody(content, host.markup);
    // The path by which items say that they have none.
    state.menuPath = host.clickNeedsMenu ? notifierMenuPath() : QStringLiteral("/NO_DBUSMENU");
    return state;
}

} // namespace burnwick
