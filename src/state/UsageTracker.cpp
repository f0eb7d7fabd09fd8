// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "state/UsageTracker.h"

#include "async/Scheduler.h"
#include "logs/LogFolders.h"
#include "model/Clock.h"
#include "platform/Process.h"
#include "prefs/PreferencesManager.h"

#include <algorithm>
#include <new>
#include <optional>
#include <system_error>
#include <tuple>
#include <utility>

namespace burnwick {

namespace {

/// By then a new file has its first lines.
constexpr std::chrono::milliseconds settleTime{1500};

/// Changes of the tree are gathered for so long, so that many lines a second cost two updates.
constexpr std::chrono::milliseconds gatherTime{500};

} // namespace

struct UsageTracker::Result {
    std::optional<UsageFigures> figures{}; ///< in the filter and zone of the job's start; absent if unchanged
    std::shared_ptr<const LogHistory> history{};       ///< null if the last one still holds
    std::shared_ptr<const HistorySums> sums{};         ///< present with figures
    std::shared_ptr<const BreakdownSums> exactSums{};  ///< present with figures
    std::optional<std::vector<LimitCourse>> courses{}; ///< absent if unchanged
    std::shared_ptr<const RecentUse> recentUse{};      ///< of the courses
    bool isIncomplete = false;                         ///< memory was short
};

UsageTracker::UsageTracker(Services services)
    : m_services(std::move(services))
    , m_figures{m_services.currentCalendar()}
    , m_counting(m_services.prices) {
    m_figures.figureChoice = m_services.preferences.figures();
    m_figures.lastUpdated = m_services.clock.now();
}

UsageTracker::~UsageTracker() = default;

void UsageTracker::start() {
    // Not in the background: the first picture has the session's figures.
    const Instant now = m_services.clock.now();
    m_history = m_services.parser.parseRecentEntries(recentSince(m_figures.calendar, now), m_services.store);
    updateSession(m_figures, m_history->entries, m_counting, now);
    Q_EMIT refreshed();
    m_fileMonitor = std::make_unique<FileMonitor>(
        m_services.parser.projectsURL(),
        [this] {
            refreshLocalData();
            refreshOnceMore();
        },
        m_services.openDirectoryEventSource);
    m_fileMonitor->start();
    watchTree();
    startJSONLTimer();
    startJob();
}

/// Watches the trees before the next job compares them.
void UsageTracker::watchTree() {
    const auto roots = distinctFolders(m_services.parser.folders());
    if (m_treeEvents && m_treeEvents->isAt(roots))
        return;
    m_changes.isEverything = true;
    m_treeEvents = m_services.openTreeEventSource(roots, [this] {
        m_changesTimer = m_services.scheduler.repeat(gatherTime, [this] {
            m_changesTimer.reset();
            takeChanges();
            startJob();
        });
    });
}

void UsageTracker::takeChanges() {
    if (!m_treeEvents)
        return;
    TreeChanges changes = m_treeEvents->take();
    m_changes.files.merge(changes.files);
    m_changes.isEverything |= changes.isEverything;
}

void UsageTracker::stop() {
    m_stopped = true;
    if (m_fileMonitor)
        m_fileMonitor->stop();
    m_jsonlTimer.reset();
    m_settleTimer.reset();
    m_changesTimer.reset();
    m_treeEvents.reset();
    m_job.requestStop();
}

void UsageTracker::startJSONLTimer() {
    m_jsonlTimer = m_services.scheduler.repeat(intervalOf(m_services.preferences.refreshRate()),
                                               [this] { refreshLocalData(); });
}

void UsageTracker::restartTimer() {
    if (m_jsonlTimer)
        startJSONLTimer();
}

/// A file or folder is announced before it is filled, and what follows inside it is not announced.
void UsageTracker::refreshOnceMore() {
    if (m_stopped)
        return;
    m_settleTimer = m_services.scheduler.repeat(settleTime, [this] {
        m_settleTimer.reset();
        refreshLocalData();
    });
}

void UsageTracker::refreshLocalData() {
    if (m_stopped)
        return;
    followTimeZone();
    if (m_fileMonitor) {
        m_fileMonitor->start();
        watchTree();
    }
    m_changes.isEverything = true;
    startJob();
}

void UsageTracker::followTimeZone() {
    const Calendar calendar = m_services.currentCalendar();
    if (m_stopped || calendar == m_figures.calendar)
        return;
    m_figures.calendar = calendar;
    recomputeHistory();
}

void UsageTracker::setLimits(const std::vector<Limit> &limits) {
    if (limits == m_limits)
        return;
    m_limits = limits;
    if (m_history && !m_stopped)
        startJob();
}

void UsageTracker::followFigureChoice() {
    m_figures.figureChoice = m_services.preferences.figures();
    showSession(m_figures);
    recomputeHistory();
}

void UsageTracker::setLogFolders(std::vector<std::filesystem::path> folders) {
    m_services.parser = JSONLParser(std::move(folders));
    if (m_fileMonitor)
        refreshLocalData();
}

void UsageTracker::setTimeFilter(TimeFilter filter) {
    if (m_figures.timeFilter == filter)
        return;
    m_figures.timeFilter = filter;
    recomputeHistory();
}

void UsageTracker::recomputeHistory() {
    m_figures.lastUpdated = m_services.clock.now();
    if (m_figures.historyReadAt)
        computeHistory(m_figures.lastUpdated);
    Q_EMIT refreshed();
}

void UsageTracker::computeHistory(Instant now) {
    if (m_sums->calendar() != m_figures.calendar) {
        m_sums = std::make_shared<const HistorySums>(*m_history, m_figures.calendar);
        m_exactSums = std::make_shared<const BreakdownSums>(*m_exactSums, m_figures.calendar);
    }
    updateHistory(m_figures, *m_sums, *m_exactSums, now);
}

void UsageTracker::startJob() {
    m_refreshDue = m_jobRunning;
    if (m_jobRunning)
        return;
    auto read = [this, &services = m_services, parser = m_services.parser, &counting = m_counting,
                 last = m_history, lastSums = m_sums, lastUse = m_recentUse, former = m_figures,
                 limits = m_limits, changes = std::exchange(m_changes, {}), now = m_services.clock.now(),
                 result = std::make_shared<Result>()](const StopRequest &stop) {
        try {
            const Calendar &calendar = former.calendar;
            // The first history has the recent files alone, which are not stored yet.
            const LogHistory *known =
                former.historyReadAt || services.store == nullptr ? last.get() : nullptr;
            if (known == nullptr || changes.isEverything)
                result->history = parser.parseAllEntries(known, services.store, stop);
            else if (!changes.files.empty())
                result->history = parser.parseChangedEntries(*known, changes.files, services.store, stop);
            const LogHistory *history = result->history ? result->history.get() : last.get();
            if (history != nullptr && !stop.isMade()) {
                const auto recentEntries = history->entriesSince(recentSince(calendar, now));
                // Files become old, and streaks and periods end, also without new entries.
                const bool isNewDay = calendar.dayOf(former.lastUpdated) != calendar.dayOf(now);
                const bool isOther =
                    last == nullptr || history->entries != last->entries || history->kept != last->kept;
                if (isOther || !former.historyReadAt || isNewDay ||
                    recentEntries.size() != former.recentFileCount) {
                    UsageFigures &figures = result->figures.emplace(former);
                    updateSession(figures, recentEntries, counting, now);
                    result->sums = std::make_shared<const HistorySums>(*history, calendar, lastSums.get());
                    result->exactSums = counting.sums(*history, calendar);
                    updateHistory(figures, *result->sums, *result->exactSums, now);
                    updateLogs(figures, *history);
                    figures.historyReadAt = now;
                }
                const bool areOtherLimits =
                    !std::ranges::equal(limits, former.limitCourses, {}, {}, &LimitCourse::limit);
                if (areOtherLimits || (isOther && !limits.empty())) {
                    result->courses = former.limitCourses;
                    if (areOtherLimits)
                        result->courses = coursesOf(
                            limits, services.recordLimits ? services.recordLimits(limits) : std::nullopt,
                            former.limitCourses);
                    result->recentUse = addTokens(*result->courses, *history, lastUse.get());
                }
            }
        } catch (const std::bad_alloc &) {
            *result = {.isIncomplete = true};
        }
        QMetaObject::invokeMethod(
            this, [this, result] { takeResult(std::move(*result)); }, Qt::QueuedConnection);
    };
    try {
        m_job = StoppableThread(std::move(read));
        m_jobRunning = true;
    } catch (const std::system_error &) {
        m_changes.isEverything = true; // no thread is available; the next refresh tries again
    }
}

void UsageTracker::takeResult(Result result) {
    m_jobRunning = false;
    m_changes.isEverything |= result.isIncomplete;
    if (m_stopped)
        return;
    const auto former = std::make_shared<
        std::tuple<decltype(m_history), decltype(m_sums), decltype(m_exactSums), decltype(m_recentUse)>>(
        m_history, m_sums, m_exactSums, m_recentUse);
    if (result.history)
        m_history = std::move(result.history);
    if (result.figures) {
        m_sums = std::move(result.sums);
        m_exactSums = std::move(result.exactSums);
        const TimeFilter filter = m_figures.timeFilter;
        const FigureChoice choice = m_figures.figureChoice;
        const Calendar calendar = m_figures.calendar;
        m_figures = std::move(*result.figures);
        if (filter != m_figures.timeFilter || choice != m_figures.figureChoice ||
            calendar != m_figures.calendar) {
            // Changed while the job was running.
            m_figures.timeFilter = filter;
            m_figures.figureChoice = choice;
            m_figures.calendar = calendar;
            showSession(m_figures);
            computeHistory(m_services.clock.now());
        }
    }
    if (result.courses) {
        m_figures.limitCourses = std::move(*result.courses);
        m_recentUse = std::move(result.recentUse);
    }
    // It may hold a million entries, which take a while to destroy.
    platform::runDetachedThread([former] { *former = {}; });
    Q_EMIT refreshed();
    if (m_refreshDue)
        startJob();
}

} // namespace burnwick
