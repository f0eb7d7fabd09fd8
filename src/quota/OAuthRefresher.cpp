// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/OAuthRefresher.h"

#include "model/Clock.h"
#include "net/HttpClient.h"
#include "net/TransportError.h"
#include "quota/FetchError.h"
#include "json/JsonReading.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <chrono>
#include <optional>

namespace burnwick {

namespace {

HttpRequest refreshRequest(const QUrl &tokenURL, const std::string &refreshToken) {
    const QJsonObject body{{QStringLiteral("grant_type"), QStringLiteral("refresh_token")},
                           {QStringLiteral("refresh_token"), QString::fromStdString(refreshToken)}};
    return {HttpMethod::post,
            tokenURL,
            {{"Content-Type", "application/json"}, oauthBetaHeader()},
            QJsonDocument(body).toJson(QJsonDocument::Compact)};
}

/// Returns null also for an empty token, which would replace a valid one.
std::optional<std::string> tokenIn(const QJsonValue &value) {
    const QString token = value.toString();
    return token.isEmpty() ? std::nullopt : std::optional(token.toStdString());
}

/// Clamps the lifetime to a century, so that the sum fits an Instant.
Instant later(Instant now, double seconds) {
    using Seconds = std::chrono::duration<double>;
    constexpr double century = Seconds(std::chrono::years(100)).count();
    return now + std::chrono::round<Instant::duration>(Seconds(std::clamp(seconds, -century, century)));
}

} // namespace

RefreshedTokens decodeRefreshedTokens(const QByteArray &body, Instant now) {
    const QJsonObject root = parseJson(body).object(); // empty for an array
    const auto accessToken = tokenIn(root.value(QLatin1String("access_token")));
    if (!accessToken)
        throw RefreshError(RefreshFailure::invalidResponse);
    const QJsonValue lifetime = root.value(QLatin1String("expires_in"));
    return {*accessToken, tokenIn(root.value(QLatin1String("refresh_token"))),
            lifetime.isDouble() ? std::optional(later(now, lifetime.toDouble())) : std::nullopt};
}

OAuthRefresher::OAuthRefresher(HttpClient &http, QUrl tokenURL, const Clock &clock)
    : m_http(http)
    , m_tokenURL(std::move(tokenURL))
    , m_clock(clock) {}

QCoro::Task<RefreshedTokens> OAuthRefresher::refresh(std::string refreshToken) {
    const Clock &clock = m_clock; // this object may be destroyed before the response
    std::optional<HttpResponse> response;
    try {
        response = co_await m_http.send(refreshRequest(m_tokenURL, refreshToken));
    } catch (const TransportError &error) {
        if (error.kind() == TransportError::Kind::notHttp)
            throw RefreshError(RefreshFailure::networkError);
        throw;
    }
    if (response->status == 400 || response->status == 401)
        throw RefreshError(RefreshFailure::tokenExpired);
    if (response->status != 200)
        throw RefreshError(RefreshFailure::serverError, response->status);
    co_return decodeRefreshedTokens(response->body, clock.now());
}

} // namespace burnwick
