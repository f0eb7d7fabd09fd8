// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/FileMonitor.h"
#include "logs/JSONLParser.h"
#include "model/ClaudeComponentStatus.h"
#include "model/Cost.h"
#include "model/ExtraUsageData.h"
#include "model/OAuthStatus.h"
#include "model/QuotaData.h"
#include "model/SessionTokens.h"
#include "model/StatusIndicator.h"
#include "model/TimeFilter.h"
#include "quota/OAuthFetcher.h"
#include "state/FailureVerdict.h"
#include "state/LoginFlow.h"
#include "state/OutageLog.h"

#include <QCoroTask>
#include <QObject>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace burnwick {

class ClaudeStatusFetcher;
class KeychainManager;
class PreferencesManager;
class QuotaAlerts;
class RepeatingTimer;
class Scheduler;
class TerminalLauncher;

/// All that the program knows and shows, and the cycle that keeps it current. Views read it and redraw on its
/// announcement. Main thread only.
class AppState final : public QObject {
    Q_OBJECT

public:
    /// What the state works with; what is referred to must outlive it.
    struct Services {
        PreferencesManager &preferences;
        JSONLParser parser;
        std::function<Calendar()> currentCalendar; ///< in the zone of the moment
        const Clock &clock;
        Scheduler &scheduler;
        OpenDirectoryEventSource openDirectoryEventSource;
        KeychainManager &keychain;
        OAuthFetcher &oauthFetcher;
        ClaudeStatusFetcher &statusFetcher;
        TerminalLauncher &terminal;
        std::function<void()> openLoginPage; ///< in the browser
        QuotaAlerts &alerts;
    };

    /// Starts nothing.
    explicit AppState(Services services, QObject *parent = nullptr);
    /// Stops what is running and waits for it; a history being loaded is dropped.
    ~AppState() override;

    /// Loads the recent entries at once, history, quota and service status in the background, then follows
    /// changes.
    void start();
    /// Ends timers and watching for good. Nothing is saved: there is nothing to save.
    void stop();

    /// Reads the recent entries anew, and what changed of the history in the background.
    void refreshLocalData();
    /// Looks whether the user's time zone has changed; if so, computes the history anew and asks for the
    /// quota, whose extra usage counts days. Each local refresh does this first.
    void followTimeZone();
    /// Call it when the machine has woken up. For a minute, or until the first answer, requests for the quota
    /// that get no answer are repeated after 3 s: the network may not be back yet.
    void wakeUp();
    /// Computes the figures of the recent entries: tokens, cost, burn rate, projections and the indicator.
    void updateLocalStats();
    /// (Re)starts the local timer at the preference's rate. By itself when that changes, as the quota timer
    /// is.
    void startJSONLTimer();
    /// (Re)starts the quota timer: every 300 seconds, whatever the preferences.
    void startOAuthTimer();
    /// Ends both timers.
    void stopTimers();

    /// Asks for the quota, unless the user does not want that or a login is running. Never throws.
    QCoro::Task<void> refreshQuota();
    /// Asks for the quota in any case, as if nothing was known of the link to the account. Never throws.
    QCoro::Task<void> forceRefreshQuota();
    /// Asks how the service is, unless that is under way; a failure changes nothing. Each quota refresh does
    /// so by itself until there was an answer, also where the quota is not asked for. Never throws.
    QCoro::Task<void> refreshClaudeStatus();
    /// Starts a login in the user's terminal; does nothing while one is running.
    void connect();
    using QObject::connect;

    [[nodiscard]] const SessionTokens &sessionTokens() const { return m_sessionTokens; }
    [[nodiscard]] double sessionCost() const { return m_sessionCost; }
    [[nodiscard]] const std::optional<QuotaData> &quotaData() const { return m_quotaData; }
    /// Whether the first fetch of this run is under way, and there is a login for it.
    [[nodiscard]] bool awaitsFirstQuota() const { return m_firstQuota == FirstQuota::awaited; }
    [[nodiscard]] OAuthStatus oauthStatus() const { return m_oauthStatus; }
    [[nodiscard]] const std::optional<ExtraUsageData> &extraUsage() const { return m_extraUsage; }
    [[nodiscard]] const std::vector<ClaudeComponentStatus> &claudeStatus() const { return m_claudeStatus; }
    [[nodiscard]] double burnRateTokensPerMin() const { return m_burnRateTokensPerMin; }
    [[nodiscard]] double projectedTodayCost() const { return m_projectedTodayCost; }
    [[nodiscard]] double projectedWeeklyCost() const { return m_projectedWeeklyCost; }
    [[nodiscard]] double projectedMonthlyCost() const { return m_projectedMonthlyCost; }
    [[nodiscard]] StatusIndicator statusIndicator() const { return m_statusIndicator; }
    /// Whether the last load of recent entries found any.
    [[nodiscard]] bool hasJSONLData() const { return m_hasJSONLData; }
    [[nodiscard]] const HistoricalData &historicalData() const { return m_historicalData; }
    /// In the zone in which historicalData() was computed.
    [[nodiscard]] const Calendar &calendar() const { return m_calendar; }
    [[nodiscard]] TimeFilter timeFilter() const { return m_timeFilter; }
    /// When historicalData() was last computed; the time of creation before that.
    [[nodiscard]] Instant lastUpdated() const { return m_lastUpdated; }

    /// Computes the history for another period; the current one changes nothing.
    void setTimeFilter(TimeFilter filter);

Q_SIGNALS:
    /// One of the values above is about to change. Read them in a later turn of the event loop.
    void objectWillChange();

private:
    /// What became of the first fetch; settled also by a failure.
    enum class FirstQuota { unknown, awaited, settled };

    /// Announces a real change, then makes it.
    template <typename Value>
    void publish(Value &property, Value value);
    QCoro::Task<void> fetchQuota(RefreshKind kind);
    QCoro::Task<void> awaitFirstQuota();
    void takeQuota(const OAuthFetcher::Usage &usage);
    void repeatSoon();
    QCoro::Task<void> takeFailure(FailureVerdict verdict, RefreshKind kind);
    void endLogin(LoginFlow::Outcome outcome);
    void askForFirstStatus();
    void updateStatusIndicator();
    void adopt(const Calendar &calendar);
    void restartTimers();
    void onDirectoryChange();
    void refreshOnceMore();
    void loadHistory();
    void storeHistory(LogHistory loaded, bool whole);
    void recomputeHistory();
    bool loadRecentEntries();

    Services m_services;
    Calendar m_calendar;

    SessionTokens m_sessionTokens;
    double m_sessionCost = 0;
    std::optional<QuotaData> m_quotaData;
    FirstQuota m_firstQuota = FirstQuota::unknown;
    OAuthStatus m_oauthStatus = OAuthStatus::unknown;
    std::optional<ExtraUsageData> m_extraUsage;
    std::vector<ClaudeComponentStatus> m_claudeStatus;
    double m_burnRateTokensPerMin = 0;
    double m_projectedTodayCost = 0;
    double m_projectedWeeklyCost = 0;
    double m_projectedMonthlyCost = 0;
    StatusIndicator m_statusIndicator = StatusIndicator::green;
    bool m_hasJSONLData = false;
    HistoricalData m_historicalData;
    TimeFilter m_timeFilter = TimeFilter::all;
    Instant m_lastUpdated;

    std::vector<JSONLEntry> m_allEntries;
    std::optional<LogHistory> m_history;       ///< absent until it was first loaded
    std::optional<Instant> m_lastKnownResetAt; ///< the first of its window; of this run of the program only
    std::unique_ptr<RepeatingTimer> m_oauthTimer;
    std::unique_ptr<RepeatingTimer> m_jsonlTimer;
    std::unique_ptr<RepeatingTimer> m_settleTimer; ///< runs once after a change of the directory
    std::unique_ptr<RepeatingTimer> m_retryTimer;  ///< runs once after a request failed that may be repeated
    Instant m_retryUntil{};                        ///< a while after the machine woke up
    std::unique_ptr<LoginFlow> m_login;
    OutageLog m_quotaOutage{"the quota"};
    OutageLog m_statusOutage{"the service's status"};
    std::atomic<bool> m_refreshQueued = false;
    bool m_stopped = false;
    bool m_statusUnderWay = false;
    bool m_statusAnswered = false;
    bool m_historyJobRunning = false;
    bool m_historyOutdated = false; ///< something changed while a job was running
    // Joined before anything above goes.
    std::unique_ptr<FileMonitor> m_fileMonitor;
    std::jthread m_historyJob;
};

template <typename Value>
void AppState::publish(Value &property, Value value) {
    if (property == value)
        return;
    Q_EMIT objectWillChange();
    property = std::move(value);
}

} // namespace burnwick
