// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "state/AppState.h"

#include "async/DetachedTask.h"
#include "async/Scheduler.h"
#include "prefs/PreferencesManager.h"

#include <QMetaObject>

#include <system_error>
#include <utility>

namespace burnwick {

namespace {

/// From then on the unsettled part of a history is no longer small, and a whole load sets it back.
constexpr std::chrono::hours settledFor{48};

/// By then a new file has its first lines.
constexpr std::chrono::milliseconds settleTime{1500};

} // namespace

AppState::AppState(Services services, QObject *parent)
    : QObject(parent)
    , m_services(std::move(services))
    , m_calendar(m_services.currentCalendar())
    , m_lastUpdated(m_services.clock.now()) {
    adopt(m_calendar);
    connect(&m_services.preferences, &PreferencesManager::refreshRateChanged, this, &AppState::restartTimers);
}

AppState::~AppState() = default;

void AppState::start() {
    loadRecentEntries();
    updateLocalStats();
    m_fileMonitor = std::make_unique<FileMonitor>(
        m_services.parser.projectsURL(), [this] { onDirectoryChange(); },
        m_services.openDirectoryEventSource);
    m_fileMonitor->start();
    startJSONLTimer();
    startOAuthTimer();
    runDetached(refreshQuota());
    runDetached(refreshClaudeStatus());
    loadHistory();
}

void AppState::stop() {
    m_stopped = true;
    if (m_fileMonitor)
        m_fileMonitor->stop();
    stopTimers();
    m_settleTimer.reset();
    m_retryTimer.reset();
    m_login.reset();
    m_historyJob.request_stop();
}

void AppState::startJSONLTimer() {
    m_jsonlTimer = m_services.scheduler.repeat(intervalOf(m_services.preferences.refreshRate()),
                                               [this] { refreshLocalData(); });
}

void AppState::startOAuthTimer() {
    constexpr std::chrono::seconds interval{300};
    m_oauthTimer = m_services.scheduler.repeat(interval, [this] { runDetached(refreshQuota()); });
}

void AppState::stopTimers() {
    m_jsonlTimer.reset();
    m_oauthTimer.reset();
}

/// The rate of those that run has changed.
void AppState::restartTimers() {
    if (!m_jsonlTimer && !m_oauthTimer)
        return;
    stopTimers();
    startOAuthTimer();
    startJSONLTimer();
}

/// Runs on the monitor's thread. Events that come while a refresh is due are served by it.
void AppState::onDirectoryChange() {
    if (m_refreshQueued.exchange(true))
        return;
    const auto refresh = [this] {
        m_refreshQueued = false;
        refreshLocalData();
        refreshOnceMore();
    };
    QMetaObject::invokeMethod(this, refresh, Qt::QueuedConnection);
}

/// A file or folder is announced before it is filled, and what follows inside it is not announced.
void AppState::refreshOnceMore() {
    if (m_stopped)
        return;
    m_settleTimer = m_services.scheduler.repeat(settleTime, [this] {
        m_settleTimer.reset();
        refreshLocalData();
    });
}

/// Whether the entries differ from the last ones.
bool AppState::loadRecentEntries() {
    const std::size_t formerCount = m_allEntries.size();
    m_allEntries = m_services.parser.parseRecentEntries();
    publish(m_hasJSONLData, !m_allEntries.empty());
    return m_allEntries.size() != formerCount ||
           JSONLParser::calculateSessionTokens(m_allEntries) != m_sessionTokens;
}

void AppState::refreshLocalData() {
    if (m_stopped)
        return;
    followTimeZone();
    if (m_fileMonitor)
        m_fileMonitor->start(); // the directory may be a new one
    const bool changed = loadRecentEntries();
    updateLocalStats();
    if (changed || (m_historyOutdated && !m_historyJobRunning))
        loadHistory();
    else if (m_history && m_calendar.dayOf(m_lastUpdated) != m_calendar.dayOf(m_services.clock.now()))
        recomputeHistory(); // streaks and periods end today, which has become another day
}

void AppState::adopt(const Calendar &calendar) {
    m_calendar = calendar;
    // A load that is under way has a parser of its own.
    m_services.parser.setCalendar(calendar);
    m_services.oauthFetcher.setCalendar(calendar);
}

void AppState::followTimeZone() {
    const Calendar calendar = m_services.currentCalendar();
    if (m_stopped || calendar == m_calendar)
        return;
    Q_EMIT objectWillChange();
    adopt(calendar);
    if (m_history)
        recomputeHistory();
    runDetached(refreshQuota());
}

void AppState::updateLocalStats() {
    publish(m_sessionTokens, JSONLParser::calculateSessionTokens(m_allEntries));
    publish(m_sessionCost, burnwick::sessionCost(m_sessionTokens));
    publish(m_burnRateTokensPerMin, JSONLParser::calculateBurnRate(m_allEntries));
    const ProjectedCosts projected = projectedCosts(m_burnRateTokensPerMin);
    publish(m_projectedTodayCost, projected.today);
    publish(m_projectedWeeklyCost, projected.week);
    publish(m_projectedMonthlyCost, projected.month);
    updateStatusIndicator();
}

void AppState::setTimeFilter(TimeFilter filter) {
    if (m_timeFilter == filter)
        return;
    publish(m_timeFilter, filter);
    recomputeHistory();
}

void AppState::recomputeHistory() {
    static const LogHistory nothing; // a temporary one would make a copy of the other, too
    publish(m_historicalData,
            m_services.parser.computeHistoricalData(m_history ? *m_history : nothing, m_timeFilter));
    publish(m_lastUpdated, m_services.clock.now());
}

/// Reads what may have changed of the history in the background: all of it for the first time, then mostly
/// the unsettled files alone.
void AppState::loadHistory() {
    if (m_historyJobRunning) {
        m_historyOutdated = true;
        return;
    }
    m_historyJobRunning = true;
    m_historyOutdated = false;
    std::optional<SettledLogs> settled;
    if (m_history && m_services.clock.now() - m_history->settled.before < settledFor)
        settled = m_history->settled;

    const auto load = [this, settled, parser = m_services.parser](const std::stop_token &stop) {
        auto loaded = std::make_shared<LogHistory>();
        bool whole = true;
        if (settled) {
            if (auto unsettled = parser.parseUnsettledEntries(*settled, stop)) {
                *loaded = std::move(*unsettled);
                whole = false;
            }
        }
        if (whole)
            *loaded = parser.parseAllEntries(stop);
        if (stop.stop_requested())
            return;
        const auto handOver = [this, loaded, whole] { storeHistory(std::move(*loaded), whole); };
        QMetaObject::invokeMethod(this, handOver, Qt::QueuedConnection);
    };
    try {
        m_historyJob = std::jthread(load);
    } catch (const std::system_error &) {
        // No more threads are to be had; the next refresh tries again.
        m_historyJobRunning = false;
        m_historyOutdated = true;
    }
}

void AppState::storeHistory(LogHistory loaded, bool whole) {
    m_historyJobRunning = false;
    if (whole || !m_history) {
        m_history = std::move(loaded);
    } else {
        std::vector<JSONLEntry> &entries = m_history->entries;
        entries.resize(m_history->firstRecent);
        entries.insert(entries.end(), loaded.entries.begin(), loaded.entries.end());
        m_history->fileCount = loaded.fileCount;
    }
    recomputeHistory();
    if (std::exchange(m_historyOutdated, false) && !m_stopped)
        loadHistory();
}

} // namespace burnwick
