// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "async/StoppableThread.h"
#include "logs/FileMonitor.h"
#include "platform/TreeEventSource.h"
#include "state/LimitCourses.h"
#include "state/LogFigures.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace burnwick {

class Clock;
class PreferencesManager;
class RepeatingTimer;
class Scheduler;

/// Keeps the figures of the logs current. After start() the logs are read by background jobs only, one at a
/// time. Main thread only.
class UsageTracker final : public QObject {
    Q_OBJECT

public:
    /// The referenced objects must outlive the tracker.
    struct Services {
        const PreferencesManager &preferences;
        JSONLParser parser;
        std::function<Calendar()> currentCalendar; ///< returns the one of the user's current zone
        const Clock &clock;
        Scheduler &scheduler;
        OpenDirectoryEventSource openDirectoryEventSource;
        OpenTreeEventSource openTreeEventSource;
        ReadingStore *store = nullptr; ///< null: each run reads all logs
        /// Stores the limits and returns the samples of each one's window, or null on failure; called by the
        /// background jobs. May be empty.
        std::function<std::optional<std::vector<std::vector<LimitSample>>>(std::span<const Limit>)>
            recordLimits{};
        PriceTable prices = PriceTable::ofProduct();
    };

    /// Starts nothing.
    explicit UsageTracker(Services services);
    /// Stops, waits for a running job and drops its result.
    ~UsageTracker() override;

    [[nodiscard]] const UsageFigures &figures() const { return m_figures; }

    /// Reads the recent files at once and all files in the background, then follows changes.
    void start();
    /// Ends timers, watching and the job for good.
    void stop();
    /// Compares the trees with the last reading in the background, and reads what changed. Watches the
    /// folders again if one is a new one.
    void refreshLocalData();
    /// Adopts the user's time zone if it has changed.
    void followTimeZone();
    /// Records the account's limits and computes their courses in the background. Does nothing if they are
    /// those of the last call.
    void setLimits(const std::vector<Limit> &limits);
    /// Adopts the preference for the figures.
    void followFigureChoice();
    /// Reads the logs in other folders from then on; the first one must stay. See JSONLParser.
    void setLogFolders(std::vector<std::filesystem::path> folders);
    /// Computes the history of another period.
    void setTimeFilter(TimeFilter filter);
    /// (Re)starts the local timer at the preference's rate.
    void startJSONLTimer();
    /// Restarts the local timer if it runs.
    void restartTimer();

Q_SIGNALS:
    /// Emitted after each refresh, also if nothing was read or changed.
    void refreshed();

private:
    struct Result;

    void watchTree();
    void takeChanges();
    void startJob();
    void takeResult(Result result);
    void computeHistory(Instant now);
    void recomputeHistory();
    void refreshOnceMore();

    Services m_services;
    UsageFigures m_figures;
    std::shared_ptr<const LogHistory>
        m_history; ///< null before start(), then of the recent files until the first job ends
    std::shared_ptr<const HistorySums> m_sums;        ///< of the history; null before the first job ends
    ExactCounting m_counting;                         ///< used by the running job, if there is one
    std::shared_ptr<const BreakdownSums> m_exactSums; ///< of the history; null before the first job ends
    std::vector<Limit> m_limits;                      ///< as they were last set
    std::shared_ptr<const RecentUse> m_recentUse;     ///< of the courses; null without any
    std::unique_ptr<RepeatingTimer> m_jsonlTimer;     ///< null before start() and after stop()
    std::unique_ptr<RepeatingTimer> m_settleTimer;    ///< fires once after a change of the directory
    std::unique_ptr<RepeatingTimer> m_changesTimer;   ///< fires once after a change in the trees
    TreeChanges m_changes{{}, true};                  ///< since the last job began
    bool m_stopped = false;
    bool m_jobRunning = false;
    bool m_refreshDue = false;                     ///< requested while a job was running
    std::unique_ptr<FileMonitor> m_fileMonitor;    ///< of the first folder; null before start()
    std::unique_ptr<TreeEventSource> m_treeEvents; ///< null when no tree is watched
    StoppableThread m_job;                         ///< joined before the members above are destroyed
};

} // namespace burnwick
