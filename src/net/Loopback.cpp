// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "net/Loopback.h"

#include <QHostAddress>

namespace burnwick {

bool isLoopback(const QString &host) {
    if (host.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0)
        return true;
    const QHostAddress address(host);
    // IPv4-mapped IPv6 addresses are rejected.
    return address == QHostAddress(QHostAddress::LocalHostIPv6) ||
           (address.protocol() == QAbstractSocket::IPv4Protocol && address.isLoopback());
}

} // namespace burnwick
