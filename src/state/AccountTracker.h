// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Snapshot.h"
#include "net/HttpClient.h"
#include "prefs/Endpoints.h"
#include "quota/FetchError.h"
#include "quota/KeychainManager.h"
#include "quota/OAuthFetcher.h"
#include "state/LoginFlow.h"
#include "status/ClaudeStatusFetcher.h"

#include <QCoroTask>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>

namespace burnwick {

class PreferencesManager;
class RepeatingTimer;
class Scheduler;
class TerminalLauncher;

/// The clients of the vendor's services. Main thread only.
struct AccountServices {
    /// `store` and `clock` must outlive this object.
    AccountServices(const Endpoints &endpoints, SecretStore &store, const Clock &clock,
                    const Calendar &calendar, HttpLimits limits = {})
        : http(limits)
        , keychain(store)
        , oauthFetcher(http, endpoints.usageURL(), endpoints.tokenURL(), keychain, clock, calendar)
        , statusFetcher(http, endpoints.statusComponentsURL()) {}

    HttpClient http;
    KeychainManager keychain;
    OAuthFetcher oauthFetcher;
    ClaudeStatusFetcher statusFetcher;
};

/// Keeps the figures of the account and of the service current, and runs the login. Main thread only.
class AccountTracker final : public QObject {
    Q_OBJECT

public:
    /// The referenced objects must outlive the tracker.
    struct Services {
        const PreferencesManager &preferences;
        const Clock &clock;
        Scheduler &scheduler;
        AccountServices &account;
        TerminalLauncher &terminal;
        std::function<void()> openLoginPage; ///< opens the vendor's page in the browser
    };

    /// Starts nothing.
    explicit AccountTracker(Services services);
    ~AccountTracker() override;

    [[nodiscard]] const AccountFigures &figures() const { return m_figures; }

    /// Requests quota and service status, and the quota again every 300 s.
    void start();
    /// Ends timers and the login for good, and ignores later answers for the quota.
    void stop();
    /// (Re)starts the quota timer: every 300 s, whatever the preferences.
    void startOAuthTimer();
    /// Restarts the quota timer if it runs.
    void restartTimer();
    /// Sets the calendar of the days until extra usage resets, and requests the quota.
    void setCalendar(const Calendar &calendar);
    /// Call after the machine has woken up. For a minute, or until the first answer, a request for the quota
    /// without an answer is repeated after 3 s: the network may not be back yet.
    void wakeUp();

    /// Requests the quota, unless the preference forbids it or a login is running. Never throws.
    QCoro::Task<void> refreshQuota();
    /// Sets the link to unknown and requests the quota in any case. Never throws.
    QCoro::Task<void> forceRefreshQuota();
    /// Requests the service status, unless a request is under way; a failure changes nothing. Until the first
    /// answer each refresh of the quota does this, also if it does not request the quota. Never throws.
    QCoro::Task<void> refreshClaudeStatus();
    /// Starts a login in the user's terminal unless one is running.
    void connect();
    using QObject::connect;

Q_SIGNALS:
    /// Emitted after each refresh, also if nothing changed.
    void refreshed();

private:
    enum class RefreshKind { automatic, forced };

    QCoro::Task<void> fetchQuota(RefreshKind kind);
    QCoro::Task<void> awaitFirstQuota();
    QCoro::Task<void> takeFailure(std::optional<FetchError::Kind> error, RefreshKind kind);
    void takeQuota(const OAuthFetcher::Usage &usage);
    void repeatSoon();
    void requestFirstStatus();
    void setStatus(OAuthStatus status);
    void endLogin(LoginFlow::Outcome outcome);

    Services m_services;
    AccountFigures m_figures;
    std::unique_ptr<RepeatingTimer> m_oauthTimer; ///< null before start() and after stop()
    std::unique_ptr<RepeatingTimer> m_retryTimer; ///< fires once after a request that may be repeated
    Instant m_retryUntil{};                       ///< a minute after the machine woke up
    std::unique_ptr<LoginFlow> m_login;           ///< null unless a login is running
    bool m_quotaOutageLogged = false;
    bool m_statusOutageLogged = false;
    bool m_firstQuotaSettled = false; ///< answered or failed
    bool m_statusUnderWay = false;
    bool m_stopped = false;
};

} // namespace burnwick
