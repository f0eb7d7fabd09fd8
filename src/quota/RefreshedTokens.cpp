// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/RefreshedTokens.h"

#include "quota/RefreshError.h"
#include "json/JsonReading.h"

#include <QJsonValue>

namespace burnwick {

namespace {

/// An empty one is none: it would be stored in place of one that works.
std::optional<std::string> tokenIn(const QJsonValue &value) {
    const QString token = value.toString();
    return token.isEmpty() ? std::nullopt : std::optional(token.toStdString());
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
    const auto accessToken = tokenIn(root.value(QLatin1String("access_token")));
    if (!accessToken)
        throw RefreshError(RefreshError::Kind::invalidResponse);
    const QJsonValue lifetime = root.value(QLatin1String("expires_in"));
    return {*accessToken, tokenIn(root.value(QLatin1String("refresh_token"))),
            lifetime.isDouble() ? std::optional(later(now, lifetime.toDouble())) : std::nullopt};
}

} // namespace burnwick
