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
#include <optional>
#include <string>
#include <utility>

namespace burnwick {

class Clock;
class HttpClient;
class KeychainManager;

/// Asks the usage endpoint how much of the account's quota is used, with Claude Code's login. Renews the
/// access token when it is about to expire and when it is rejected, and stores the new one. Calls may
/// overlap: of two renewals the later one stays. Main thread only.
class OAuthFetcher final : public QObject {
    Q_OBJECT

public:
    using Usage = std::pair<QuotaData, std::optional<ExtraUsageData>>;

    /// What is referred to must outlive this object; this object may go while a fetch runs.
    OAuthFetcher(HttpClient &http, QUrl usageURL, QUrl tokenURL, KeychainManager &keychain,
                 const Clock &clock, const Calendar &calendar);

    /// Throws FetchError; TransportError when no answer came or this object went before it did; DecodeError
    /// when the answer is not the JSON expected.
    [[nodiscard]] QCoro::Task<Usage> fetchUsage();

    /// Runs the event loop until no renewal is under way, or `atMost` has passed: tokens that the server has
    /// issued and nobody has stored would cost the user a login.
    void finishRenewals(std::chrono::milliseconds atMost);

Q_SIGNALS:
    /// A renewal is about to be asked for, the first of those under way.
    void renewalsBegan();
    /// The last of the renewals under way is stored, or has failed.
    void renewalsEnded();

private:
    class Renewal;

    [[nodiscard]] QCoro::Task<std::string> validAccessToken();
    [[nodiscard]] QCoro::Task<Usage> performFetch(std::string accessToken);
    [[nodiscard]] QCoro::Task<std::string> forceRefresh();
    [[nodiscard]] QCoro::Task<std::string> refreshAndSave(std::string refreshToken);

    HttpClient &m_http;
    QUrl m_usageURL;
    OAuthRefresher m_refresher;
    KeychainManager &m_keychain;
    const Clock &m_clock;
    Calendar m_calendar;
    int m_renewals = 0; ///< under way
};

} // namespace burnwick
