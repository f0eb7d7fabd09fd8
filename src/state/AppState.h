// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "state/AccountTracker.h"
#include "state/UsageTracker.h"

namespace burnwick {

/// Holds the current snapshot, which the trackers keep current, and announces its changes. Main thread only.
class AppState final : public QObject {
    Q_OBJECT

public:
    struct Services {
        UsageTracker::Services usage;
        AccountTracker::Services account;
    };

    /// Starts nothing.
    explicit AppState(Services services, QObject *parent = nullptr);

    [[nodiscard]] const Snapshot &snapshot() const { return m_snapshot; }

    /// Starts both trackers; the session's figures are there when it returns.
    void start();
    /// Stops both trackers for good. Nothing is saved.
    void stop();
    /// Call after the machine has woken up.
    void wakeUp();

    // See the trackers.
    void refreshLocalData() { m_usage.refreshLocalData(); }
    void followTimeZone() { m_usage.followTimeZone(); }
    void setLogFolders(std::vector<std::filesystem::path> folders) {
        m_usage.setLogFolders(std::move(folders));
    }
    void setTimeFilter(TimeFilter filter) { m_usage.setTimeFilter(filter); }
    QCoro::Task<void> refreshQuota() { return m_account.refreshQuota(); }
    QCoro::Task<void> refreshQuotaNow() { return m_account.refreshQuotaNow(); }
    QCoro::Task<void> forceRefreshQuota() { return m_account.forceRefreshQuota(); }
    void observe(std::vector<Limit> limits) { m_account.observe(std::move(limits)); }
    QCoro::Task<void> refreshClaudeStatus() { return m_account.refreshClaudeStatus(); }
    void connect() { m_account.connect(); }
    using QObject::connect;

Q_SIGNALS:
    /// The snapshot is about to change. Read it in a later turn of the event loop.
    void objectWillChange();
    /// Emitted after each refresh of a tracker, also if nothing changed; its figures are in the snapshot.
    void refreshed();

private:
    template <typename Figures>
    void take(Figures &part, const Figures &figures);

    UsageTracker m_usage;
    AccountTracker m_account;
    Snapshot m_snapshot;
};

} // namespace burnwick
