// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/bus/DBusStruct.h"

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>

namespace burnwick {

/// A picture in messages of the StatusNotifierItem protocol: (iiay).
struct NotifierPixmap {
    int width = 0;
    int height = 0;
    QByteArray argb; ///< row by row, unpremultiplied ARGB32 in network byte order

    static constexpr auto fields =
        std::tuple(&NotifierPixmap::width, &NotifierPixmap::height, &NotifierPixmap::argb);
    bool operator==(const NotifierPixmap &) const = default;
};
using NotifierPixmaps = QList<NotifierPixmap>;

/// (sa(iiay)ss)
struct NotifierToolTip {
    QString iconName;
    NotifierPixmaps iconPixmaps;
    QString title;
    QString body; ///< in the host's markup

    static constexpr auto fields = std::tuple(&NotifierToolTip::iconName, &NotifierToolTip::iconPixmaps,
                                              &NotifierToolTip::title, &NotifierToolTip::body);
    bool operator==(const NotifierToolTip &) const = default;
};

} // namespace burnwick
