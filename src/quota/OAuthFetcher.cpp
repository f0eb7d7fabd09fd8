// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/OAuthFetcher.h"

#include "model/Clock.h"
#include "net/HttpClient.h"
#include "net/TransportError.h"
#include "quota/FetchError.h"
#include "quota/KeychainManager.h"
#include "quota/OAuthProtocol.h"
#include "quota/OAuthUsageResponse.h"
#include "quota/RefreshError.h"

#include <QEventLoop>
#include <QPointer>
#include <QTimer>

namespace burnwick {

namespace {

/// To be called after each suspension, before anything of the fetcher's is touched.
void requireAlive(const QPointer<OAuthFetcher> &fetcher) {
    if (!fetcher)
        throw TransportError(TransportError::Kind::cancelled);
}

HttpRequest usageRequest(const QUrl &usageURL, const std::string &accessToken) {
    return {HttpMethod::get,
            usageURL,
            {{"Authorization", QByteArray::fromStdString("Bearer " + accessToken)}, oauthBetaHeader()},
            {}};
}

/// Only what may pass by itself is called temporary.
FetchError::Kind kindFor(const RefreshError &error) {
    switch (error.kind()) {
    case RefreshError::Kind::tokenExpired:
        return FetchError::Kind::refreshTokenExpired;
    case RefreshError::Kind::networkError:
    case RefreshError::Kind::serverError:
        return FetchError::Kind::refreshTemporaryFailure;
    case RefreshError::Kind::invalidResponse:
        break;
    }
    return FetchError::Kind::refreshFailed;
}

} // namespace

/// Counts one renewal for as long as it lives.
class OAuthFetcher::Renewal {
public:
    explicit Renewal(OAuthFetcher *fetcher)
        : m_fetcher(fetcher) {
        if (m_fetcher->m_renewals++ == 0)
            Q_EMIT m_fetcher->renewalsBegan();
    }
    ~Renewal() {
        if (m_fetcher && --m_fetcher->m_renewals == 0)
            Q_EMIT m_fetcher->renewalsEnded();
    }
    Renewal(const Renewal &) = delete;
    Renewal &operator=(const Renewal &) = delete;

private:
    QPointer<OAuthFetcher> m_fetcher;
};

OAuthFetcher::OAuthFetcher(HttpClient &http, QUrl usageURL, QUrl tokenURL, KeychainManager &keychain,
                           const Clock &clock, const Calendar &calendar)
    : m_http(http)
    , m_usageURL(std::move(usageURL))
    , m_refresher(http, std::move(tokenURL), clock)
    , m_keychain(keychain)
    , m_clock(clock)
    , m_calendar(calendar) {}

QCoro::Task<OAuthFetcher::Usage> OAuthFetcher::fetchUsage() {
    const QPointer<OAuthFetcher> self(this);
    const std::string storedToken = co_await validAccessToken();
    requireAlive(self);
    try {
        const Usage usage = co_await performFetch(storedToken);
        co_return usage;
    } catch (const FetchError &error) {
        if (error.kind() != FetchError::Kind::unauthorized)
            throw;
    }
    requireAlive(self);
    const std::string newToken = co_await forceRefresh();
    requireAlive(self);
    const Usage usage = co_await performFetch(newToken);
    co_return usage;
}

void OAuthFetcher::finishRenewals(std::chrono::milliseconds atMost) {
    if (m_renewals == 0)
        return;
    QEventLoop waiting;
    connect(this, &OAuthFetcher::renewalsEnded, &waiting, &QEventLoop::quit);
    QTimer::singleShot(atMost, &waiting, &QEventLoop::quit);
    waiting.exec();
}

QCoro::Task<std::string> OAuthFetcher::validAccessToken() {
    const QPointer<OAuthFetcher> self(this);
    const auto credentials = co_await m_keychain.readCredentials();
    requireAlive(self);
    if (!credentials)
        throw FetchError(FetchError::Kind::noToken);
    if (!isExpired(*credentials, m_clock.now()) || !credentials->refreshToken)
        co_return credentials->accessToken;
    const std::string newToken = co_await refreshAndSave(*credentials->refreshToken);
    co_return newToken;
}

QCoro::Task<std::string> OAuthFetcher::forceRefresh() {
    const QPointer<OAuthFetcher> self(this);
    const auto credentials = co_await m_keychain.readCredentials();
    requireAlive(self);
    if (!credentials || !credentials->refreshToken)
        throw FetchError(FetchError::Kind::noRefreshToken);
    const std::string newToken = co_await refreshAndSave(*credentials->refreshToken);
    co_return newToken;
}

QCoro::Task<std::string> OAuthFetcher::refreshAndSave(std::string refreshToken) {
    const QPointer<OAuthFetcher> self(this);
    const Renewal renewal(this);
    std::optional<RefreshedTokens> tokens;
    std::optional<FetchError> failure;
    try {
        tokens = co_await m_refresher.refresh(refreshToken);
    } catch (const RefreshError &error) {
        failure = FetchError(kindFor(error));
    } catch (const std::exception &) {
        failure = FetchError(FetchError::Kind::refreshFailed);
    }
    requireAlive(self);
    if (failure)
        throw *failure;
    co_await m_keychain.updateCredentials(tokens->accessToken, tokens->refreshToken, tokens->expiresAt);
    co_return tokens->accessToken;
}

QCoro::Task<OAuthFetcher::Usage> OAuthFetcher::performFetch(std::string accessToken) {
    const QPointer<OAuthFetcher> self(this);
    std::optional<HttpResponse> response;
    try {
        response = co_await m_http.send(usageRequest(m_usageURL, accessToken));
    } catch (const TransportError &error) {
        if (error.kind() == TransportError::Kind::notHttp)
            throw FetchError(FetchError::Kind::invalidResponse);
        throw;
    }
    requireAlive(self);
    if (response->status == 401)
        throw FetchError(FetchError::Kind::unauthorized);
    if (response->status != 200)
        throw FetchError::http(response->status);
    const OAuthUsageResponse usage = decodeUsageResponse(response->body);
    co_return Usage(quotaDataFrom(usage), extraUsageDataFrom(usage, m_calendar, m_clock.now()));
}

} // namespace burnwick
