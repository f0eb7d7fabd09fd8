// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/statusitem/StatusNotifierService.h"

#include "platform/linux/bus/BusCall.h"
#include "platform/linux/statusitem/StatusItemPainting.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QStandardPaths>
#include <QtDBus/QDBusMetaType>
#include <QtDBus/QDBusReply>

#include <fstream>
#include <string>
#include <utility>

namespace burnwick {

Q_LOGGING_CATEGORY(statusItemLog, "burnwick.statusitem")

namespace {

constexpr QLatin1String watcherName("org.kde.StatusNotifierWatcher");

/// Each item of this process has a separate bus name and connection.
QString newServiceName() {
    static int number = 0;
    return QStringLiteral("org.kde.StatusNotifierItem-%1-%2")
        .arg(QCoreApplication::applicationPid())
        .arg(++number);
}

/// Returns an empty name when the process has ended or is hidden from this one.
std::string processNameOf(uint pid) {
    std::ifstream file("/proc/" + std::to_string(pid) + "/comm");
    std::string name;
    std::getline(file, name);
    return name;
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
    m_watcher.reset();
    QDBusConnection::disconnectFromBus(m_connectionName);
}

void StatusNotifierService::setContent(const StatusItemContent &content) {
    m_content = content;
    updateState();
}

void StatusNotifierService::exportObjects() {
    qDBusRegisterMetaType<NotifierPixmap>();
    qDBusRegisterMetaType<NotifierPixmaps>();
    qDBusRegisterMetaType<NotifierToolTip>();
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
    whenFinished(call, this, [this](const QDBusMessage &reply) {
        // A process in another container may have the same number, and own the name. Hosts also accept the
        // connection's unique name.
        const bool isOwner = QDBusReply<uint>(reply).value() == primaryOwner;
        m_serviceName = isOwner ? m_connectionName : m_connection.baseService();
        followWatcher();
    });
}

void StatusNotifierService::followWatcher() {
    m_watcher.emplace(m_connection, watcherName);
    connect(&*m_watcher, &ServiceOwner::changed, this, [this](const QString &watcher) {
        if (watcher.isEmpty())
            Q_EMIT hostAbsent();
        else
            identifyHost(watcher);
    });
}

void StatusNotifierService::identifyHost(const QString &watcher) {
    whenFinished(callMessageBus(m_connection, QStringLiteral("GetConnectionUnixProcessID"), {watcher}),
                 &*m_watcher, [this, watcher](const QDBusMessage &reply) {
                     if (m_watcher->name() != watcher)
                         return;
                     const QDBusReply<uint> pid(reply);
                     presentTo(trayHostFor(pid.isValid() ? processNameOf(pid.value()) : std::string()));
                 });
}

void StatusNotifierService::presentTo(const TrayHost &host) {
    m_host = host;
    m_labelOverlooked = host.overlooksLabel;
    if (host.iconsByName && !m_namedIcons)
        writeNamedIcons();
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

void StatusNotifierService::writeNamedIcons() {
    const QDir runtime(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation));
    m_namedIcons.emplace(runtime.filePath(QStringLiteral("burnwick-icons-XXXXXX")));
    constexpr int size = 48; // hosts scale down
    for (const auto indicator : {StatusIndicator::green, StatusIndicator::orange, StatusIndicator::red}) {
        const QString file = m_namedIcons->filePath(iconNameFor(indicator) + QStringLiteral(".png"));
        if (!m_namedIcons->isValid() || !paintSquareIcon(indicator, {}, size).save(file, "PNG")) {
            qCWarning(statusItemLog) << "cannot write the status icons to" << m_namedIcons->path();
            return;
        }
    }
}

void StatusNotifierService::registerWithWatcher() {
    QDBusMessage call =
        QDBusMessage::createMethodCall(watcherName, QStringLiteral("/StatusNotifierWatcher"), watcherName,
                                       QStringLiteral("RegisterStatusNotifierItem"));
    call.setArguments({m_serviceName});
    call.setAutoStartService(false);
    whenFinished(m_connection.asyncCall(call), this, [](const QDBusMessage &reply) {
        if (reply.type() == QDBusMessage::ErrorMessage)
            qCWarning(statusItemLog) << "the desktop refused the status item:" << reply.errorMessage();
    });
}

void StatusNotifierService::updateState() {
    m_object.setState(notifierStateFor(m_content, m_host, m_namedIcons ? m_namedIcons->path() : QString()));
}

void StatusNotifierService::onDisconnected() {
    qCWarning(statusItemLog) << "the session bus is gone, and with it the status item";
    m_watcher.reset();
    Q_EMIT hostAbsent();
}

} // namespace burnwick
