// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Snapshot.h"
#include "net/HttpClient.h"
#include "prefs/Endpoints.h"
#include "quota/FetchError.h"
#include "quota/KeychainManager.h"
#include "quota/OAuthFetcher.h"
#include "quota/RequestPacing.h"
#include "state/LoginFlow.h"
#include "state/OutageLog.h"
#include "status/ClaudeStatusFetcher.h"

#include <QCoroTask>
#include <QObject>
#include <QRandomGenerator>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

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
        /// Returns the random part of a pause after a refusal, from 0 to 1.
        std::function<double()> jitter = [] { return QRandomGenerator::global()->generateDouble(); };
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

    /// Requests the quota automatically, unless the preference forbids it, a login is running or it is too
    /// early (see RequestPacing). Never throws.
    QCoro::Task<void> refreshQuota();
    /// Requests the quota for the user, unless a login is running; with the preference off, like
    /// forceRefreshQuota(). Within 30 s after a refusal, sets asksAgainAt instead. Never throws.
    QCoro::Task<void> refreshQuotaNow();
    /// Sets the link to unknown and requests the quota for the user, whatever the preference. Within 30 s
    /// after a refusal, sets asksAgainAt instead. Never throws.
    QCoro::Task<void> forceRefreshQuota();
    /// Takes the limits that the assistant's status line shows, with the instants of their observation.
    void observe(std::vector<Limit> limits);
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
    void followAgeOfQuota();
    void pause(const FetchError &refusal);
    bool isPostponed();
    void resumeAt(Instant instant);
    void repeatSoon();
    void requestFirstStatus();
    void setStatus(OAuthStatus status);
    void endLogin(LoginFlow::Outcome outcome);

    Services m_services;
    AccountFigures m_figures;
    std::unique_ptr<RepeatingTimer> m_oauthTimer; ///< null before start() and after stop()
    std::unique_ptr<RepeatingTimer> m_retryTimer; ///< fires once after a request that may be repeated
    Instant m_retryUntil{};                       ///< a minute after the machine woke up
    RequestPacing m_pacing;
    std::unique_ptr<RepeatingTimer> m_resumeTimer; ///< fires once after a refusal
    std::unique_ptr<RepeatingTimer> m_staleTimer;  ///< fires once when the quota becomes stale
    std::unique_ptr<LoginFlow> m_login;            ///< null unless a login is running
    OutageLog m_quotaOutage{"the quota"};
    OutageLog m_statusOutage{"the service's status"};
    bool m_firstQuotaSettled = false; ///< answered or failed
    bool m_statusUnderWay = false;
    bool m_stopped = false;
};

} // namespace burnwick
