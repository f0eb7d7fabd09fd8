// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/ReleaseAddresses.h"

#include "prefs/Endpoints.h"

namespace burnwick {

QUrl appcastURL(const QUrl &productBaseURL) {
    return appendPath(productBaseURL, QStringLiteral("/appcast.xml"));
}

QUrl downloadURL(const QUrl &productBaseURL, const QString &version) {
    const QString segment = QString::fromLatin1(QUrl::toPercentEncoding(version));
    return appendPath(productBaseURL,
                      QStringLiteral("/releases/Burnwick-") + segment + QStringLiteral(".dmg"));
}

bool isPlaceholder(const QUrl &productBaseURL) {
    const QString host = productBaseURL.host();
    return host == QLatin1String("example") || host.endsWith(QLatin1String(".example"));
}

} // namespace burnwick
