// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/RefreshedTokens.h"

#include "net/JsonReading.h"
#include "quota/RefreshError.h"

#include <QJsonValue>

namespace burnwick {

namespace {

std::optional<std::string> stringIn(const QJsonValue &value) {
    return value.isString() ? std::optional(value.toString().toStdString()) : std::nullopt;
}

Instant later(Instant now, double seconds) {
    using Seconds = std::chrono::duration<double>;
    const Seconds lifetime(seconds);
    // Doubles are too coarse at the limits to compare exactly; an hour short of them will do.
    constexpr Seconds margin(3600);
    if (lifetime > Seconds(Instant::max() - now) - margin)
        return Instant::max();
    if (lifetime < Seconds(Instant::min().time_since_epoch()) + margin)
        return Instant::min();
    return now + std::chrono::round<Instant::duration>(lifetime);
}

} // namespace

RefreshedTokens decodeRefreshedTokens(const QByteArray &body, Instant now) {
    const QJsonObject root = parseJson(body).object(); // empty for an array
    const auto accessToken = stringIn(root.value(QLatin1String("access_token")));
    if (!accessToken)
        throw RefreshError(RefreshError::Kind::invalidResponse);
    const QJsonValue lifetime = root.value(QLatin1String("expires_in"));
    return {*accessToken, stringIn(root.value(QLatin1String("refresh_token"))),
            lifetime.isDouble() ? std::optional(later(now, lifetime.toDouble())) : std::nullopt};
}

} // namespace burnwick
