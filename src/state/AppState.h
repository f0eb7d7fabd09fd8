// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/FileMonitor.h"
#include "logs/JSONLParser.h"
#include "model/Cost.h"
#include "model/QuotaData.h"
#include "model/SessionTokens.h"
#include "model/StatusIndicator.h"
#include "model/TimeFilter.h"

#include <QObject>

#include <atomic>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace burnwick {

class PreferencesManager;
class RepeatingTimer;
class Scheduler;

/// All that the program knows and shows, and the cycle that keeps it current. Views read it and redraw on its
/// announcement. Main thread only.
class AppState final : public QObject {
    Q_OBJECT

public:
    /// What the state works with; what is referred to must outlive it.
    struct Services {
        PreferencesManager &preferences;
        JSONLParser parser;
        Calendar calendar;
        const Clock &clock;
        Scheduler &scheduler;
        OpenDirectoryEventSource openDirectoryEventSource;
    };

    /// Starts nothing.
    explicit AppState(Services services, QObject *parent = nullptr);
    /// Stops what is running and waits for it; a history being loaded is dropped.
    ~AppState() override;

    /// Loads the recent entries at once and the history in the background, then follows changes.
    void start();
    /// Ends timers and watching for good. Nothing is saved: there is nothing to save.
    void stop();

    /// Reads the recent entries anew, and what changed of the history in the background.
    void refreshLocalData();
    /// Computes the figures of the recent entries: tokens, cost, burn rate, projections and the indicator.
    void updateLocalStats();
    /// (Re)starts the local timer at the preference's rate.
    void startJSONLTimer();
    /// Ends the local timer.
    void stopJSONLTimer();

    [[nodiscard]] const SessionTokens &sessionTokens() const { return m_sessionTokens; }
    [[nodiscard]] double sessionCost() const { return m_sessionCost; }
    [[nodiscard]] const std::optional<QuotaData> &quotaData() const { return m_quotaData; }
    [[nodiscard]] double burnRateTokensPerMin() const { return m_burnRateTokensPerMin; }
    [[nodiscard]] double projectedTodayCost() const { return m_projectedTodayCost; }
    [[nodiscard]] double projectedWeeklyCost() const { return m_projectedWeeklyCost; }
    [[nodiscard]] double projectedMonthlyCost() const { return m_projectedMonthlyCost; }
    [[nodiscard]] StatusIndicator statusIndicator() const { return m_statusIndicator; }
    /// Whether the last load of recent entries found any.
    [[nodiscard]] bool hasJSONLData() const { return m_hasJSONLData; }
    [[nodiscard]] const HistoricalData &historicalData() const { return m_historicalData; }
    [[nodiscard]] TimeFilter timeFilter() const { return m_timeFilter; }
    /// When historicalData() was last computed; the time of creation before that.
    [[nodiscard]] Instant lastUpdated() const { return m_lastUpdated; }

    /// Computes the history for another period; the current one changes nothing.
    void setTimeFilter(TimeFilter filter);

Q_SIGNALS:
    /// One of the values above is about to change. Read them in a later turn of the event loop.
    void objectWillChange();

private:
    template <typename Value>
    void publish(Value &property, Value value);
    void updateStatusIndicator();
    void onDirectoryChange();
    void loadHistory();
    void storeHistory(LogHistory loaded, bool whole);
    void recomputeHistory();
    bool loadRecentEntries();

    Services m_services;

    SessionTokens m_sessionTokens;
    double m_sessionCost = 0;
    std::optional<QuotaData> m_quotaData;
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
    std::optional<LogHistory> m_history; ///< absent until it was first loaded
    std::unique_ptr<RepeatingTimer> m_jsonlTimer;
    std::atomic<bool> m_refreshQueued = false;
    bool m_stopped = false;
    bool m_historyJobRunning = false;
    bool m_historyOutdated = false; ///< something changed while a job was running
    // Joined before anything above goes.
    std::unique_ptr<FileMonitor> m_fileMonitor;
    std::jthread m_historyJob;
};

} // namespace burnwick
