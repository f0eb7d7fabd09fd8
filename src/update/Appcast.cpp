// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/Appcast.h"

#include "model/Version.h"
#include "net/HttpClient.h"
#include "net/TransportError.h"
#include "update/ReleaseAddresses.h"

#include <algorithm>

namespace burnwick {

namespace {

using Kind = AppcastVerdict::Kind;

/// QChar::isDigit() accepts the digits of every script.
bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

/// Removes the digits at the start of the text and returns them without leading zeros.
QStringView takeNumber(QStringView &text) {
    const auto end = std::ranges::find_if_not(text, isDigit);
    QStringView number = text.first(end - text.begin());
    text = text.sliced(number.size());
    while (number.startsWith(u'0'))
        number = number.sliced(1);
    return number;
}

AppcastVerdict failure(const QString &problem, bool isServerReachable = true) {
    return {Kind::couldNotCheck, {}, problem, isServerReachable};
}

} // namespace

bool isNewerVersion(QStringView candidate, QStringView current) {
    while (!candidate.isEmpty() && !current.isEmpty()) {
        if (isDigit(candidate.front()) && isDigit(current.front())) {
            const QStringView left = takeNumber(candidate);
            const QStringView right = takeNumber(current);
            if (left.size() != right.size())
                return left.size() > right.size();
            if (left != right)
                return left > right;
        } else {
            if (candidate.front() != current.front())
                return candidate.front() > current.front();
            candidate = candidate.sliced(1);
            current = current.sliced(1);
        }
    }
    return candidate.size() > current.size();
}

AppcastVerdict judgeAppcast(const QByteArray &body, QStringView current) {
    constexpr QLatin1String opening("<sparkle:shortVersionString>");
    constexpr QLatin1String closing("</sparkle:shortVersionString>");
    if (!QUtf8StringView(body).isValidUtf8())
        return failure(QStringLiteral("the appcast is not UTF-8"));
    const QString text = QString::fromUtf8(body);
    const qsizetype start = text.indexOf(opening);
    const qsizetype end = text.indexOf(closing);
    if (start < 0 || end < start + opening.size())
        return failure(QStringLiteral("the appcast has no version"));
    const QString version = text.mid(start + opening.size(), end - start - opening.size());
    constexpr qsizetype longestVersion = 64; // limits the addresses and notifications with it
    if (version.size() > longestVersion)
        return failure(QStringLiteral("the version is too long"));
    return isNewerVersion(version, current) ? AppcastVerdict{Kind::newerVersion, version}
                                            : AppcastVerdict{Kind::upToDate};
}

QCoro::Task<AppcastVerdict> checkAppcast(HttpClient &http, QUrl productBaseURL) {
    const HttpRequest request{HttpMethod::get, appcastURL(productBaseURL)};
    try {
        const HttpResponse response = co_await http.send(request);
        co_return judgeAppcast(response.body, QString::fromUtf8(version()));
    } catch (const TransportError &error) {
        co_return failure(QString::fromUtf8(error.what()), error.kind() != TransportError::Kind::unreachable);
    } catch (const std::exception &error) {
        co_return failure(QString::fromUtf8(error.what()));
    }
}

} // namespace burnwick
