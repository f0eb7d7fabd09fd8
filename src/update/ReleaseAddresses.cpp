// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/ReleaseAddresses.h"

#include "prefs/Endpoints.h"

namespace burnwick {

QUrl appcastURL(const QUrl &productBaseURL) {
    return appendPath(productBaseURL, QStringLiteral("/appcast.xml"));
}

QUrl releaseURL(const QUrl &productBaseURL, ReleaseForm form, const QString &version) {
    const QString releases = QStringLiteral("/releases/");
    const QString segment = QString::fromLatin1(QUrl::toPercentEncoding(version));
    if (form == ReleaseForm::diskImage)
        return appendPath(productBaseURL,
                          releases + QStringLiteral("Burnwick-") + segment + QStringLiteral(".dmg"));
    // A URL's path resolves these even when they are encoded.
    const bool isDotSegment = version == QLatin1String(".") || version == QLatin1String("..");
    return appendPath(productBaseURL, isDotSegment ? releases : releases + segment);
}

bool isPlaceholder(const QUrl &productBaseURL) {
    const QString host = productBaseURL.host();
    return host == QLatin1String("example") || host.endsWith(QLatin1String(".example"));
}

} // namespace burnwick
