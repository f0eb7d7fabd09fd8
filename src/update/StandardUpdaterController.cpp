// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/StandardUpdaterController.h"

#include "async/DetachedTask.h"
#include "async/Scheduler.h"
#include "model/Version.h"
#include "net/HttpClient.h"
#include "net/TransportError.h"
#include "platform/ThreadName.h"
#include "update/Appcast.h"
#include "update/ReleaseAddresses.h"
#include "update/UpdaterDelegate.h"
#include "update/VersionOrder.h"

#include <QLoggingCategory>
#include <QMetaObject>
#include <QPointer>

#include <utility>

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(updaterLog, "burnwick.updater", QtInfoMsg)

/// Timers stand still while the machine sleeps, so that one of a day could come days late.
constexpr std::chrono::hours timeBetweenLooks{1};

} // namespace

StandardUpdaterController::StandardUpdaterController(Services services)
    : m_services(std::move(services))
    , m_dailyCheck(m_services.defaults, m_services.clock) {
    if (isPlaceholder(m_services.productBaseURL))
        return;
    m_timer = m_services.scheduler.repeat(timeBetweenLooks, [this] { checkIfDue(); });
    QMetaObject::invokeMethod(
        this, [this] { checkIfDue(); }, Qt::QueuedConnection);
}

StandardUpdaterController::~StandardUpdaterController() = default;

void StandardUpdaterController::checkForUpdates() {
    m_userInitiated = true;
    if (m_fetching)
        return;
    m_dailyCheck.record();
    begin();
}

void StandardUpdaterController::checkIfDue() {
    if (!m_fetching && m_dailyCheck.takeTurn())
        begin();
}

void StandardUpdaterController::begin() {
    m_fetching = true;
    runDetached(check());
}

QCoro::Task<void> StandardUpdaterController::check() {
    const QPointer<StandardUpdaterController> self(this);
    const HttpRequest request{HttpMethod::get, appcastURL(m_services.productBaseURL)};
    std::optional<HttpResponse> response;
    std::optional<TransportError> failure;
    try {
        response = co_await m_services.http.send(request);
    } catch (const TransportError &error) {
        failure = error;
    }
    if (!self)
        co_return;
    m_fetching = false;
    const bool userInitiated = std::exchange(m_userInitiated, false);
    if (!failure && response->status == 200) {
        onOwnThread([this, body = response->body, userInitiated] { conclude(body, userInitiated); });
        co_return;
    }
    // Whoever starts the machine before its network would otherwise miss every day's check.
    if (failure && failure->kind() == TransportError::Kind::unreachable)
        m_dailyCheck.giveBack();
    const QString reason =
        failure ? QString::fromUtf8(failure->what()) : QStringLiteral("HTTP status %1").arg(response->status);
    qCDebug(updaterLog).noquote() << "The check was given up:" << reason;
    onOwnThread([this, reason] { m_services.updaterDelegate.updaterDidAbort(reason); });
}

/// Runs on the thread of its own.
void StandardUpdaterController::conclude(const QByteArray &document, bool userInitiated) {
    UpdaterDelegate &delegate = m_services.updaterDelegate;
    UserDriverDelegate &driver = m_services.userDriverDelegate;
    const std::optional<Appcast> appcast = readAppcast(document);
    if (!appcast)
        return delegate.updaterDidAbort(QStringLiteral("the appcast cannot be read"));
    if (!appcast->newest)
        return delegate.updaterDidNotFindUpdate(QStringLiteral("the appcast lists no release"));
    const AppcastItem &item = *appcast->newest;
    if (std::is_lteq(compareVersions(item.displayVersionString, QString::fromUtf8(version()))))
        return delegate.updaterDidNotFindUpdate();

    delegate.updaterDidFindValidUpdate(item);
    const bool show = userInitiated || !driver.supportsGentleScheduledUpdateReminders();
    driver.standardUserDriverWillHandleShowingUpdate(show, item, {userInitiated});
    if (show)
        QMetaObject::invokeMethod(
            this, [this, shown = item.displayVersionString] { m_services.showUpdate(shown); },
            Qt::QueuedConnection);
}

void StandardUpdaterController::onOwnThread(std::function<void()> work) {
    m_thread = std::jthread([work = std::move(work)] {
        platform::nameThisThread("updater");
        work();
    });
}

} // namespace burnwick
