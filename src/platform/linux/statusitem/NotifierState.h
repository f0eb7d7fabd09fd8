// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/statusitem/StatusNotifierTypes.h"
#include "platform/linux/statusitem/TrayHost.h"

#include <QtCore/QString>
#include <QtGui/QImage>

namespace burnwick {

/// The properties of the item that depend on its content or on the host.
struct NotifierState {
    QString title;
    QString accessibleDescription;
    QString label; ///< empty unless the host shows it
    QString iconName;
    QString iconThemePath;
    NotifierPixmaps icon;
    NotifierToolTip toolTip;
    QString menuPath;
};

/// Returns the path of the one-entry menu, for hosts that need a menu.
[[nodiscard]] QString notifierMenuPath();

/// Returns the state for the host. `iconThemePath` is the directory with the icons of iconNameFor().
[[nodiscard]] NotifierState notifierStateFor(const StatusItemContent &content, const TrayHost &host,
                                             const QString &iconThemePath);

/// Returns the title with the dot's colour named, for screen readers.
[[nodiscard]] QString accessibleDescriptionOf(const StatusItemContent &content);

/// Returns the name of the icon with a dot of that colour.
[[nodiscard]] QString iconNameFor(StatusIndicator indicator);

/// Returns the tool tip's body in the host's markup: the title, then the quota in words with the dot's colour
/// named, as in "67% of the 5-hour window used (orange)".
[[nodiscard]] QString toolTipBody(const StatusItemContent &content, TrayHost::Markup markup);

[[nodiscard]] NotifierPixmap toNotifierPixmap(const QImage &image);

} // namespace burnwick
