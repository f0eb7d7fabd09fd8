// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QString>
#include <QUrl>

namespace burnwick {

class HttpClient;

/// A release that the appcast lists.
struct AppcastItem {
    QString displayVersionString;
};

/// The result of an appcast check.
struct AppcastVerdict {
    enum class Kind { upToDate, newerVersion, couldNotCheck };

    Kind kind = Kind::couldNotCheck;
    QString version = {};          ///< the newer one, exactly as in the appcast
    QString problem = {};          ///< why the check failed
    bool isServerReachable = true; ///< false: the check failed without a connection
};

/// Compares versions: runs of the digits 0 to 9 by value, whatever their length, and all else by UTF-16 code
/// units. When one version begins with the other, the longer one is newer. Thread-safe.
[[nodiscard]] bool isNewerVersion(QStringView candidate, QStringView current);

/// Compares the appcast's first version element with the current version. Searches for the literal tags and
/// does not trim the text between them. Fails when the body is not UTF-8 or has no such element. Thread-safe.
[[nodiscard]] AppcastVerdict judgeAppcast(const QByteArray &body, QStringView current);

/// Fetches the appcast and compares it with this program's version. Ignores the HTTP status of the response.
/// Never throws; destroying the client completes it with couldNotCheck. Main thread only.
[[nodiscard]] QCoro::Task<AppcastVerdict> checkAppcast(HttpClient &http, QUrl productBaseURL);

} // namespace burnwick
