// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/OAuthRefresher.h"

#include "model/Clock.h"
#include "net/HttpClient.h"
#include "net/TransportError.h"
#include "quota/OAuthProtocol.h"
#include "quota/RefreshError.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>

#include <optional>
#include <utility>

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

} // namespace

OAuthRefresher::OAuthRefresher(HttpClient &http, QUrl tokenURL, const Clock &clock)
    : m_http(http)
    , m_tokenURL(std::move(tokenURL))
    , m_clock(clock) {}

QCoro::Task<RefreshedTokens> OAuthRefresher::refresh(std::string refreshToken) {
    const QPointer<OAuthRefresher> self(this);
    std::optional<HttpResponse> response;
    try {
        response = co_await m_http.send(refreshRequest(m_tokenURL, refreshToken));
    } catch (const TransportError &error) {
        if (error.kind() == TransportError::Kind::notHttp)
            throw RefreshError(RefreshError::Kind::networkError);
        throw;
    }
    if (!self)
        throw TransportError(TransportError::Kind::cancelled);
    if (response->status == 400 || response->status == 401)
        throw RefreshError(RefreshError::Kind::tokenExpired);
    if (response->status != 200)
        throw RefreshError::server(response->status);
    co_return decodeRefreshedTokens(response->body, m_clock.now());
}

} // namespace burnwick
