// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/OAuthFetcher.h"

#include "async/DetachedTask.h"
#include "model/Clock.h"
#include "net/HttpClient.h"
#include "net/RetryAfter.h"
#include "net/TransportError.h"
#include "quota/FetchError.h"
#include "quota/KeychainManager.h"
#include "quota/OAuthUsageResponse.h"

#include <QCoroTimer>
#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QLockFile>
#include <QPointer>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTimer>

#include <coroutine>
#include <exception>
#include <utility>

namespace burnwick {

namespace {

/// Throws when the fetcher was destroyed. Call it after each suspension, before any access to the fetcher.
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

/// Only failures that may end without the user's help are temporary.
FetchFailure failureFor(RefreshFailure failure) {
    switch (failure) {
    case RefreshFailure::tokenExpired:
        return FetchFailure::refreshTokenExpired;
    case RefreshFailure::networkError:
    case RefreshFailure::serverError:
        return FetchFailure::refreshTemporaryFailure;
    case RefreshFailure::invalidResponse:
        break;
    }
    return FetchFailure::refreshFailed;
}

/// The lock file keeps this user's other processes from sending the same refresh token.
QString exchangeLockPath() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    QDir().mkpath(folder + QLatin1String("/burnwick"));
    return folder + QLatin1String("/burnwick/token-exchange.lock");
}

/// Tries to lock; returns whether another process holds the lock. A lock file that cannot be created is
/// ignored.
bool isHeldByAnother(QLockFile &lock) {
    return !lock.tryLock() && lock.error() == QLockFile::LockFailedError;
}

} // namespace

/// A running renewal of the access token. All calls that need the new token await it.
class OAuthFetcher::Renewal {
public:
    void end(std::string accessToken, std::exception_ptr failure) {
        m_accessToken = std::move(accessToken);
        m_failure = std::move(failure);
        m_ended = true;
        for (const auto waiting : std::exchange(m_waiting, {}))
            waiting.resume();
    }

    /// Separate from the renewal, because GCC 12 copies an awaiter that is not a local variable.
    struct Awaiter {
        std::shared_ptr<Renewal> renewal;

        [[nodiscard]] bool await_ready() const noexcept { return renewal->m_ended; }
        void await_suspend(std::coroutine_handle<> waiting) const { renewal->m_waiting.push_back(waiting); }
        [[nodiscard]] std::string await_resume() const {
            if (renewal->m_failure)
                std::rethrow_exception(renewal->m_failure);
            return renewal->m_accessToken;
        }
    };

private:
    std::string m_accessToken;
    std::exception_ptr m_failure;
    bool m_ended = false;
    std::vector<std::coroutine_handle<>> m_waiting;
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
        if (error.kind() != FetchFailure::unauthorized)
            throw;
    }
    requireAlive(self);
    const std::string newToken = co_await forceRefresh(storedToken);
    requireAlive(self);
    const Usage usage = co_await performFetch(newToken);
    co_return usage;
}

void OAuthFetcher::finishExchange(std::chrono::milliseconds atMost) {
    const QDeadlineTimer deadline(atMost);
    // After a refusal, a second exchange may follow at once: of a token stored meanwhile.
    while (m_isExchanging && !deadline.hasExpired()) {
        QEventLoop waiting;
        connect(this, &OAuthFetcher::exchangeEnded, &waiting, &QEventLoop::quit);
        QTimer::singleShot(std::chrono::milliseconds(deadline.remainingTime()), &waiting, &QEventLoop::quit);
        waiting.exec();
    }
}

QCoro::Task<std::string> OAuthFetcher::validAccessToken() {
    const QPointer<OAuthFetcher> self(this);
    const auto credentials = co_await m_keychain.readCredentials();
    requireAlive(self);
    if (!credentials)
        throw FetchError(FetchFailure::noToken);
    if (!isExpired(*credentials, m_clock.now()) || !credentials->refreshToken)
        co_return credentials->accessToken;
    const std::string newToken = co_await forceRefresh(credentials->accessToken);
    co_return newToken;
}

/// Returns another access token than the stale one. Awaits a running renewal or starts one.
QCoro::Task<std::string> OAuthFetcher::forceRefresh(std::string staleToken) {
    auto renewal = m_renewal;
    if (!renewal) {
        renewal = m_renewal = std::make_shared<Renewal>();
        runDetached(renew(renewal, std::move(staleToken)));
    }
    Renewal::Awaiter renewed{renewal};
    const std::string newToken = co_await renewed;
    co_return newToken;
}

QCoro::Task<void> OAuthFetcher::renew(std::shared_ptr<Renewal> renewal, std::string staleToken) {
    const QPointer<OAuthFetcher> self(this);
    std::string newToken;
    std::exception_ptr failure;
    try {
        newToken = co_await renewedToken(std::move(staleToken));
    } catch (...) {
        failure = std::current_exception();
    }
    if (self)
        m_renewal.reset();
    renewal->end(std::move(newToken), std::move(failure));
}

/// Other programs renew the same login. Checks for their tokens before an exchange and after a refusal.
QCoro::Task<std::string> OAuthFetcher::renewedToken(std::string staleToken) {
    const QPointer<OAuthFetcher> self(this);
    QLockFile lock(exchangeLockPath());
    const QDeadlineTimer deadline(OAuthFetcher::longestExchange);
    while (isHeldByAnother(lock) && !deadline.hasExpired()) {
        co_await QCoro::sleepFor(std::chrono::milliseconds(100));
        requireAlive(self);
    }
    std::optional<std::string> refused;
    for (;;) {
        const auto credentials = co_await m_keychain.readCredentials();
        requireAlive(self);
        if (credentials && credentials->accessToken != staleToken && !isExpired(*credentials, m_clock.now()))
            co_return credentials->accessToken;
        if (refused && (!credentials || credentials->refreshToken == refused))
            throw FetchError(FetchFailure::refreshTokenExpired);
        if (!credentials || !credentials->refreshToken)
            throw FetchError(FetchFailure::noRefreshToken);
        try {
            const std::string newToken = co_await refreshAndSave(*credentials->refreshToken);
            co_return newToken;
        } catch (const FetchError &error) {
            if (error.kind() != FetchFailure::refreshTokenExpired)
                throw;
        }
        requireAlive(self);
        refused = credentials->refreshToken;
    }
}

QCoro::Task<std::string> OAuthFetcher::refreshAndSave(std::string refreshToken) {
    const QPointer<OAuthFetcher> self(this);
    m_isExchanging = true;
    Q_EMIT exchangeBegan();
    const auto ending = qScopeGuard([self] {
        if (!self)
            return;
        self->m_isExchanging = false;
        Q_EMIT self->exchangeEnded();
    });
    std::optional<RefreshedTokens> tokens;
    std::optional<FetchError> failure;
    try {
        tokens = co_await m_refresher.refresh(refreshToken);
    } catch (const RefreshError &error) {
        failure = FetchError(failureFor(error.kind()));
    } catch (const TransportError &) {
        failure = FetchError::refreshUnanswered();
    } catch (const std::exception &) {
        failure = FetchError(FetchFailure::refreshFailed);
    }
    requireAlive(self);
    if (failure)
        throw *failure;
    const auto newer = co_await m_keychain.updateCredentials(refreshToken, *tokens);
    co_return newer ? newer->accessToken : tokens->accessToken;
}

QCoro::Task<OAuthFetcher::Usage> OAuthFetcher::performFetch(std::string accessToken) {
    const QPointer<OAuthFetcher> self(this);
    std::optional<HttpResponse> response;
    try {
        response = co_await m_http.send(usageRequest(m_usageURL, accessToken));
    } catch (const TransportError &error) {
        if (error.kind() == TransportError::Kind::notHttp)
            throw FetchError(FetchFailure::invalidResponse);
        throw;
    }
    requireAlive(self);
    if (response->status == 401)
        throw FetchError(FetchFailure::unauthorized);
    const Instant now = m_clock.now();
    if (response->status == 429)
        throw FetchError::tooManyRequests(parseRetryAfter(response->header("Retry-After"), now));
    if (response->status != 200)
        throw FetchError(FetchFailure::httpError, response->status);
    const OAuthUsageResponse decoded = decodeUsageResponse(response->body);
    const Usage usage{quotaDataFrom(decoded), extraUsageDataFrom(decoded, m_calendar, now),
                      limitsFrom(decoded, now)};
    co_return usage;
}

} // namespace burnwick
