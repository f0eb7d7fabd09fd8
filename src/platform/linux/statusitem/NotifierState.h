// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/statusitem/StatusNotifierTypes.h"
#include "platform/linux/statusitem/TrayHost.h"

#include <QtCore/QString>

namespace burnwick {

/// Everything about the item that a host can read and that depends on the content or on the host itself.
struct NotifierState {
    QString title;
    QString accessibleDescription;
    QString label; ///< empty where the host shows none
    QString iconName;
    QString iconThemePath;
    NotifierPixmaps icon;
    NotifierToolTip toolTip;
    QString menuPath;
};

/// Where the one-entry menu is exported for the hosts that need one.
[[nodiscard]] QString notifierMenuPath();

/// What the host is to be told. `iconThemePath` is the directory that has the icons iconNameFor() speaks of.
[[nodiscard]] NotifierState notifierStateFor(const StatusItemContent &content, const TrayHost &host,
                                             const QString &iconThemePath);

/// The name of the icon with a dot of that colour.
[[nodiscard]] QString iconNameFor(StatusIndicator indicator);

} // namespace burnwick
