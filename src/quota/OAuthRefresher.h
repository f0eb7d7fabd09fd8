// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "quota/RefreshedTokens.h"

#include <QByteArray>
#include <QCoroTask>
#include <QUrl>

#include <string>
#include <utility>

namespace burnwick {

class Clock;
class HttpClient;

/// The header that both of the vendor's OAuth endpoints require, as Claude Code sends it.
[[nodiscard]] inline std::pair<QByteArray, QByteArray> oauthBetaHeader() {
    return {"anthropic-beta", "oauth-2025-04-20"};
}

/// Decodes the body of a response received at `now`. Clamps the lifetime to a century. Throws DecodeError
/// when the body is not JSON, and RefreshError with invalidResponse when it has no access token.
[[nodiscard]] RefreshedTokens decodeRefreshedTokens(const QByteArray &body, Instant now);

/// Exchanges a refresh token for a new access token at the token endpoint. Stores nothing. Main thread only.
class OAuthRefresher final {
public:
    /// The referenced objects must outlive this one, and the clock a running exchange, too.
    OAuthRefresher(HttpClient &http, QUrl tokenURL, const Clock &clock);

    /// Throws RefreshError; TransportError when there is no response; DecodeError when the response is not
    /// JSON. This object may be destroyed before the response.
    [[nodiscard]] QCoro::Task<RefreshedTokens> refresh(std::string refreshToken);

private:
    HttpClient &m_http;
    QUrl m_tokenURL;
    const Clock &m_clock;
};

} // namespace burnwick
