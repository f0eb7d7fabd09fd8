// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "net/Loopback.h"

#include <QHostAddress>

namespace burnwick {

bool isLoopback(const QString &host) {
    if (host.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0)
        return true;
    const QHostAddress address(host);
    // Of IPv6, ::1 alone; an IPv4 address in IPv6 clothes is none of ours.
    return address == QHostAddress(QHostAddress::LocalHostIPv6) ||
           (address.protocol() == QAbstractSocket::IPv4Protocol && address.isLoopback());
}

} // namespace burnwick
