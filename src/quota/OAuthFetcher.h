// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Calendar.h"
#include "model/ExtraUsageData.h"
#include "model/QuotaData.h"
#include "quota/OAuthRefresher.h"

#include <QCoroTask>
#include <QObject>
#include <QUrl>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace burnwick {

class Clock;
class HttpClient;
class KeychainManager;

/// Asks the usage endpoint how much of the account's quota is used, with Claude Code's login. Renews the
/// access token when it is about to expire and when it is rejected, and stores the new one. Calls may
/// overlap; a refresh token is sent once, and calls that need its answer share it. A lock file in the user's
/// cache folder keeps other processes from sending it meanwhile. Main thread only.
class OAuthFetcher final : public QObject {
    Q_OBJECT

public:
    /// Beyond the limits of the requests and of the store, which end an exchange of tokens before.
    static constexpr std::chrono::seconds longestExchange{25};

    using Usage = std::pair<QuotaData, std::optional<ExtraUsageData>>;

    /// What is referred to must outlive this object; this object may go while a fetch runs.
    OAuthFetcher(HttpClient &http, QUrl usageURL, QUrl tokenURL, KeychainManager &keychain,
                 const Clock &clock, const Calendar &calendar);
    /// For the answers that come from now on.
    void setCalendar(const Calendar &calendar) { m_calendar = calendar; }

    /// Throws FetchError; TransportError when no answer came or this object went before it did; DecodeError
    /// when the answer is not the JSON expected.
    [[nodiscard]] QCoro::Task<Usage> fetchUsage();

    /// Runs the event loop until no tokens are being exchanged, or `atMost` has passed: tokens that the
    /// server has issued and nobody has stored would cost the user a login.
    void finishExchange(std::chrono::milliseconds atMost);

Q_SIGNALS:
    /// A refresh token is about to be sent.
    void exchangeBegan();
    /// The tokens that came for it are stored, or it has failed.
    void exchangeEnded();

private:
    class Exchange;
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
    std::shared_ptr<Renewal> m_renewal; ///< under way
    bool m_exchanging = false;
};

} // namespace burnwick
