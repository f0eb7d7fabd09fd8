// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QString>
#include <QUrl>

namespace burnwick {

class HttpClient;

/// What a look at the appcast tells.
struct AppcastVerdict {
    enum class Kind { upToDate, newerVersion, couldNotCheck };

    Kind kind = Kind::couldNotCheck;
    QString version = {}; ///< the newer one, exactly as the appcast has it

    bool operator==(const AppcastVerdict &) const = default;
};

/// Compares the first version element of the appcast, found as literal text and not trimmed, with the current
/// version. An appcast that is not UTF-8, or has no such element, cannot be checked.
[[nodiscard]] AppcastVerdict judgeAppcast(const QByteArray &body, QStringView current);

/// Fetches the appcast and compares it with this program's version. The body decides, whatever the status of
/// the answer. Never throws; a client that goes meanwhile ends it. Main thread only.
[[nodiscard]] QCoro::Task<AppcastVerdict> checkAppcast(HttpClient &http, QUrl productBaseURL);

} // namespace burnwick
