// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "quota/RefreshedTokens.h"

#include <QCoroTask>
#include <QObject>
#include <QUrl>

#include <string>

namespace burnwick {

class Clock;
class HttpClient;

/// Trades a refresh token for a new access token at the token endpoint. Stores nothing. Main thread only.
class OAuthRefresher final : public QObject {
public:
    /// What is referred to must outlive this object.
    OAuthRefresher(HttpClient &http, QUrl tokenURL, const Clock &clock);

    /// Throws RefreshError; TransportError when no answer came or this object went before it did; DecodeError
    /// when the answer is not JSON.
    [[nodiscard]] QCoro::Task<RefreshedTokens> refresh(std::string refreshToken);

private:
    HttpClient &m_http;
    QUrl m_tokenURL;
    const Clock &m_clock;
};

} // namespace burnwick
