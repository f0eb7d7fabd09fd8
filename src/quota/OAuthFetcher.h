// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Calendar.h"
#include "model/ExtraUsageData.h"
#include "model/Limit.h"
#include "model/QuotaData.h"
#include "quota/OAuthRefresher.h"

#include <QCoroTask>
#include <QObject>
#include <QUrl>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace burnwick {

class Clock;
class HttpClient;
class KeychainManager;

/// Requests the account's quota from the usage endpoint, with Claude Code's login. Renews the access token
/// when it is about to expire and when it is rejected, and stores the new one. Calls may overlap: they share
/// one renewal, so that a refresh token is sent once. A lock file in the user's cache folder keeps other
/// processes from sending it at the same time. Main thread only.
class OAuthFetcher final : public QObject {
    Q_OBJECT

public:
    /// The upper limit of an exchange of tokens: longer than the deadlines of the request and the store
    /// together.
    static constexpr std::chrono::seconds longestExchange{25};

    struct Usage {
        QuotaData quota;
        std::optional<ExtraUsageData> extraUsage;
        std::vector<Limit> limits; ///< distinct; session, weekly, scoped ones
    };

    /// The referenced objects must outlive this one, which may be destroyed while a fetch runs.
    OAuthFetcher(HttpClient &http, QUrl usageURL, QUrl tokenURL, KeychainManager &keychain,
                 const Clock &clock, const Calendar &calendar);
    /// Sets the calendar that counts the days until the reset of extra usage.
    void setCalendar(const Calendar &calendar) { m_calendar = calendar; }

    /// Throws FetchError; TransportError when there is no response or this object was destroyed before it;
    /// DecodeError when the response is not the JSON expected.
    [[nodiscard]] QCoro::Task<Usage> fetchUsage();

    /// Runs the event loop until no tokens are being exchanged or `atMost` has passed. If the process ended
    /// after the server has issued tokens and before they are stored, the user would have to log in again.
    void finishExchange(std::chrono::milliseconds atMost);

Q_SIGNALS:
    /// Emitted before a refresh token is sent.
    void exchangeBegan();
    /// Emitted after the new tokens were stored or the exchange failed.
    void exchangeEnded();

private:
    class Renewal;

    [[nodiscard]] QCoro::Task<std::string> validAccessToken();
    [[nodiscard]] QCoro::Task<Usage> performFetch(std::string accessToken);
    [[nodiscard]] QCoro::Task<std::string> forceRefresh(std::string staleToken);
    [[nodiscard]] QCoro::Task<void> renew(std::shared_ptr<Renewal> renewal, std::string staleToken);
    [[nodiscard]] QCoro::Task<std::string> renewedToken(std::string staleToken);
    [[nodiscard]] QCoro::Task<std::string> refreshAndSave(std::string refreshToken);

    HttpClient &m_http;
    QUrl m_usageURL;
    OAuthRefresher m_refresher;
    KeychainManager &m_keychain;
    const Clock &m_clock;
    Calendar m_calendar;
    std::shared_ptr<Renewal> m_renewal; ///< the running one; null otherwise
    bool m_isExchanging = false;
};

} // namespace burnwick
