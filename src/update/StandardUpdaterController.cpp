// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/StandardUpdaterController.h"

#include "async/DetachedTask.h"
#include "async/Scheduler.h"
#include "update/Appcast.h"
#include "update/ReleaseAddresses.h"
#include "update/UpdateChecker.h"
#include "update/UserDriverDelegate.h"

#include <QLoggingCategory>
#include <QMetaObject>
#include <QPointer>

#include <utility>

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(updaterLog, "burnwick.updater", QtInfoMsg)

/// Timers stop while the machine sleeps: a daily one could be days late.
constexpr std::chrono::hours pollInterval{1};

} // namespace

StandardUpdaterController::StandardUpdaterController(Services services)
    : m_services(std::move(services))
    , m_dailyCheck(m_services.defaults, m_services.clock) {
    if (isPlaceholder(m_services.productBaseURL))
        return;
    m_timer = m_services.scheduler.repeat(pollInterval, [this] { checkIfDue(); });
    QMetaObject::invokeMethod(
        this, [this] { checkIfDue(); }, Qt::QueuedConnection);
}

StandardUpdaterController::~StandardUpdaterController() = default;

void StandardUpdaterController::checkIfDue() {
    if (!m_isChecking && m_dailyCheck.isDue())
        runDetached(check());
}

QCoro::Task<void> StandardUpdaterController::check() {
    const QPointer<StandardUpdaterController> self(this);
    m_isChecking = true;
    // With the time of the response, the next day's check would be an hour late.
    const qint64 begun = m_dailyCheck.now();
    const AppcastVerdict verdict = co_await checkAppcast(m_services.http, m_services.productBaseURL);
    if (!self)
        co_return;
    m_isChecking = false;
    // Without a connection, as before the network is up, the next poll checks again.
    if (verdict.isServerReachable)
        m_dailyCheck.record(begun);
    report(verdict);
}

void StandardUpdaterController::report(const AppcastVerdict &verdict) const {
    UpdateChecker &delegate = m_services.updaterDelegate;
    UserDriverDelegate &driver = m_services.userDriverDelegate;
    const AppcastItem item{verdict.version};
    switch (verdict.kind) {
    case AppcastVerdict::Kind::upToDate:
        delegate.updaterDidNotFindUpdate();
        break;
    case AppcastVerdict::Kind::newerVersion:
        delegate.updaterDidFindValidUpdate(item);
        driver.standardUserDriverWillHandleShowingUpdate(!driver.supportsGentleScheduledUpdateReminders(),
                                                         item, {.userInitiated = false});
        break;
    case AppcastVerdict::Kind::couldNotCheck:
        qCDebug(updaterLog).noquote() << "The check failed:" << verdict.problem;
        delegate.updaterDidAbort(verdict.problem);
        break;
    }
}

} // namespace burnwick
