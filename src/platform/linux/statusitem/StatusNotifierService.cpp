// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/statusitem/StatusNotifierService.h"

#include "platform/linux/bus/MessageBus.h"
#include "platform/linux/statusitem/StatusItemLog.h"

#include <QtCore/QCoreApplication>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusPendingReply>

#include <utility>

namespace burnwick {

namespace {

/// Counts the items of this process: each has a bus name and a connection of its own.
int nextItemNumber() {
    static int number = 0;
    return ++number;
}

QString newServiceName() {
    return QStringLiteral("org.kde.StatusNotifierItem-%1-%2")
        .arg(QCoreApplication::applicationPid())
        .arg(nextItemNumber());
}

} // namespace

StatusNotifierService::StatusNotifierService(const StatusItemContent &content,
                                             StatusNotifierObject::ActivateHandler handler)
    : m_content(content)
    , m_object(std::move(handler))
    , m_menu([this] { m_object.activate(); })
    , m_connectionName(newServiceName())
    , m_connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName)) {
    updateState();
    if (!isConnected()) {
        qCInfo(statusItemLog) << "no session bus, so no status item on it:"
                              << m_connection.lastError().message();
        return;
    }
    m_connection.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                         QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                         SLOT(onDisconnected()));
    connect(&m_menu, &OneEntryMenu::layoutRead, this, [this] {
        if (std::exchange(m_labelOverlooked, false))
            registerWithWatcher();
    });
    exportObjects();
    requestName();
}

StatusNotifierService::~StatusNotifierService() {
    m_watcherTracker.reset();
    QDBusConnection::disconnectFromBus(m_connectionName);
}

void StatusNotifierService::setContent(const StatusItemContent &content) {
    m_content = content;
    updateState();
}

void StatusNotifierService::exportObjects() {
    registerNotifierTypes();
    registerMenuTypes();
    constexpr auto exported = QDBusConnection::ExportAllProperties | QDBusConnection::ExportScriptableSlots |
                              QDBusConnection::ExportScriptableSignals;
    m_connection.registerObject(QStringLiteral("/StatusNotifierItem"), &m_object, exported);
}

void StatusNotifierService::requestName() {
    constexpr uint doNotQueue = 4;
    constexpr uint primaryOwner = 1;
    const auto call =
        callMessageBus(m_connection, QStringLiteral("RequestName"), {m_connectionName, doNotQueue});
    connect(new QDBusPendingCallWatcher(call, this), &QDBusPendingCallWatcher::finished, this,
            [this](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                const QDBusPendingReply<uint> answer = *finished;
                // A process in another container may have the same number and so the name. Hosts take the
                // connection's unique name as well.
                const bool owned = answer.isValid() && answer.value() == primaryOwner;
                m_serviceName = owned ? m_connectionName : m_connection.baseService();
                followWatcher();
            });
}

void StatusNotifierService::followWatcher() {
    m_watcherTracker = std::make_unique<WatcherTracker>(m_connection);
    connect(m_watcherTracker.get(), &WatcherTracker::appeared, this, &StatusNotifierService::presentTo);
    connect(m_watcherTracker.get(), &WatcherTracker::absent, this, &StatusNotifierService::hostAbsent);
}

void StatusNotifierService::presentTo(const TrayHost &host) {
    m_host = host;
    m_labelOverlooked = host.overlooksLabel;
    if (host.iconsByName && !m_namedIcons)
        m_namedIcons.emplace();
    if (host.clickNeedsMenu) {
        m_connection.registerObject(notifierMenuPath(), &m_menu,
                                    QDBusConnection::ExportAllProperties |
                                        QDBusConnection::ExportScriptableSlots);
    } else {
        m_connection.unregisterObject(notifierMenuPath());
    }
    updateState();
    registerWithWatcher();
    Q_EMIT hostAppeared();
}

void StatusNotifierService::registerWithWatcher() {
    QDBusMessage call = QDBusMessage::createMethodCall(
        statusNotifierWatcherName(), QStringLiteral("/StatusNotifierWatcher"), statusNotifierWatcherName(),
        QStringLiteral("RegisterStatusNotifierItem"));
    call.setArguments({m_serviceName});
    call.setAutoStartService(false);
    connect(new QDBusPendingCallWatcher(m_connection.asyncCall(call), this),
            &QDBusPendingCallWatcher::finished, this, [](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                if (finished->isError())
                    qCWarning(statusItemLog)
                        << "the desktop refused the status item:" << finished->error().message();
            });
}

void StatusNotifierService::updateState() {
    m_object.setState(notifierStateFor(m_content, m_host, m_namedIcons ? m_namedIcons->path() : QString()));
}

void StatusNotifierService::onDisconnected() {
    qCWarning(statusItemLog) << "the session bus is gone, and with it the status item";
    m_watcherTracker.reset();
    Q_EMIT hostAbsent();
}

} // namespace burnwick
