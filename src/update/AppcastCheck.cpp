// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/AppcastCheck.h"

#include "model/Version.h"
#include "net/HttpClient.h"
#include "update/ReleaseAddresses.h"
#include "update/VersionOrder.h"

#include <QLoggingCategory>

#include <exception>

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(appcastLog, "burnwick.appcast", QtInfoMsg)

using Kind = AppcastVerdict::Kind;

} // namespace

AppcastVerdict judgeAppcast(const QByteArray &body, QStringView current) {
    constexpr QLatin1String opening("<sparkle:shortVersionString>");
    constexpr QLatin1String closing("</sparkle:shortVersionString>");
    if (!QUtf8StringView(body).isValidUtf8())
        return {Kind::couldNotCheck};
    const QString text = QString::fromUtf8(body);
    const qsizetype start = text.indexOf(opening);
    const qsizetype end = text.indexOf(closing);
    if (start < 0 || end < start + opening.size())
        return {Kind::couldNotCheck};
    const QString remote = text.mid(start + opening.size(), end - start - opening.size());
    if (std::is_gt(compareVersions(remote, current)))
        return {Kind::newerVersion, remote};
    return {Kind::upToDate};
}

QCoro::Task<AppcastVerdict> checkAppcast(HttpClient &http, QUrl productBaseURL) {
    const HttpRequest request{HttpMethod::get, appcastURL(productBaseURL)};
    try {
        const HttpResponse response = co_await http.send(request);
        co_return judgeAppcast(response.body, QString::fromUtf8(version()));
    } catch (const std::exception &error) {
        qCDebug(appcastLog, "Cannot be fetched: %s", error.what());
        co_return {Kind::couldNotCheck};
    }
}

} // namespace burnwick
