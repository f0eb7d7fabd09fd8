// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QMetaType>
#include <QtCore/QString>
#include <QtDBus/QDBusArgument>
#include <QtGui/QImage>

namespace burnwick {

/// A picture as the StatusNotifierItem protocol carries it: (iiay).
struct NotifierPixmap {
    int width = 0;
    int height = 0;
    QByteArray argb; ///< row by row, unpremultiplied ARGB32 in network byte order

    bool operator==(const NotifierPixmap &) const = default;
};
using NotifierPixmaps = QList<NotifierPixmap>;

/// (sa(iiay)ss)
struct NotifierToolTip {
    QString iconName;
    NotifierPixmaps iconPixmaps;
    QString title;
    QString body; ///< in the host's markup

    bool operator==(const NotifierToolTip &) const = default;
};

[[nodiscard]] NotifierPixmap toNotifierPixmap(const QImage &image);

/// Makes the types known to QtDBus; before an object that uses them is exported or read.
void registerNotifierTypes();

QDBusArgument &operator<<(QDBusArgument &argument, const NotifierPixmap &pixmap);
const QDBusArgument &operator>>(const QDBusArgument &argument, NotifierPixmap &pixmap);
QDBusArgument &operator<<(QDBusArgument &argument, const NotifierToolTip &toolTip);
const QDBusArgument &operator>>(const QDBusArgument &argument, NotifierToolTip &toolTip);

} // namespace burnwick

Q_DECLARE_METATYPE(burnwick::NotifierPixmap)
Q_DECLARE_METATYPE(burnwick::NotifierPixmaps)
Q_DECLARE_METATYPE(burnwick::NotifierToolTip)
