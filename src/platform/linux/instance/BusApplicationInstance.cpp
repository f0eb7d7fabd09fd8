// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/instance/BusApplicationInstance.h"

#include "platform/Platform.h"
#include "platform/linux/bus/MessageBus.h"

#include <QtCore/QLoggingCategory>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusPendingReply>

#include <utility>

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(instanceLog, "burnwick.instance")

/// Counts this process's instances: each has a connection of its own.
QString newConnectionName() {
    static int number = 0;
    return QStringLiteral("burnwick-instance-%1").arg(++number);
}

} // namespace

QString applicationBusName() {
    return QStringLiteral("com.burnwick.Burnwick");
}

QString applicationObjectPath() {
    return QStringLiteral("/com/burnwick/Burnwick");
}

BusApplicationInstance::BusApplicationInstance(const Limits &limits)
    : m_limits(limits)
    , m_connectionName(newConnectionName())
    , m_connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName))
    , m_object([this](const ApplicationRequest &request) { receive(request); })
    , m_claimsLeft(3) {}

BusApplicationInstance::~BusApplicationInstance() {
    QDBusConnection::disconnectFromBus(m_connectionName);
}

void BusApplicationInstance::claim(const ApplicationRequest &request,
                                   std::function<void(InstanceClaim outcome)> answer) {
    m_request = request;
    m_answer = std::move(answer);
    if (!m_connection.isConnected()) {
        qCInfo(instanceLog) << "no session bus, so other instances are not seen:"
                            << m_connection.lastError().message();
        QMetaObject::invokeMethod(
            &m_context, [this] { settle(InstanceClaim::unknown); }, Qt::QueuedConnection);
        return;
    }
    // Before the name is ours: a call may come the moment it is.
    m_connection.registerObject(applicationObjectPath(), &m_object, QDBusConnection::ExportScriptableSlots);
    requestName();
}

void BusApplicationInstance::setRequestHandler(RequestHandler handler) {
    m_handler = std::move(handler);
    for (const ApplicationRequest &request : std::exchange(m_early, {}))
        m_handler(request);
}

void BusApplicationInstance::requestName() {
    constexpr uint doNotQueue = 4;
    constexpr uint primaryOwner = 1;
    --m_claimsLeft;
    const auto call = callMessageBus(m_connection, QStringLiteral("RequestName"),
                                     {applicationBusName(), doNotQueue}, m_limits.claim);
    QObject::connect(new QDBusPendingCallWatcher(call, &m_context), &QDBusPendingCallWatcher::finished,
                     &m_context, [this](QDBusPendingCallWatcher *finished) {
                         finished->deleteLater();
                         const QDBusPendingReply<uint> answer = *finished;
                         if (answer.isError()) {
                             qCWarning(instanceLog)
                                 << "the session bus does not answer:" << answer.error().message();
                             settle(InstanceClaim::unknown);
                         } else if (answer.value() == primaryOwner) {
                             settle(InstanceClaim::first);
                         } else {
                             handOver();
                         }
                     });
}

void BusApplicationInstance::handOver() {
    const std::string_view action = nameOf(m_request.action);
    const QVariantMap platformData = platformDataOf(m_request.activation);
    QDBusMessage call = QDBusMessage::createMethodCall(
        applicationBusName(), applicationObjectPath(), QStringLiteral("org.freedesktop.Application"),
        action.empty() ? QStringLiteral("Activate") : QStringLiteral("ActivateAction"));
    call.setAutoStartService(false);
    if (action.empty())
        call.setArguments({platformData});
    else
        call.setArguments({QString::fromStdString(std::string(action)), QVariantList(), platformData});
    const auto pending = m_connection.asyncCall(call, static_cast<int>(m_limits.handOver.count()));
    QObject::connect(new QDBusPendingCallWatcher(pending, &m_context), &QDBusPendingCallWatcher::finished,
                     &m_context, [this](QDBusPendingCallWatcher *finished) {
                         finished->deleteLater();
                         if (finished->isError())
                             handOverFailed(finished->error());
                         else
                             settle(InstanceClaim::handedOver);
                     });
}

void BusApplicationInstance::handOverFailed(const QDBusError &error) {
    // It ended between the two calls, so that the name is free again.
    const bool gone = error.type() == QDBusError::ServiceUnknown ||
                      error.name() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner");
    if (gone && m_claimsLeft > 0) {
        requestName();
        return;
    }
    qCWarning(instanceLog) << "Burnwick runs already, but does not answer:" << error.message();
    settle(InstanceClaim::notHandedOver);
}

void BusApplicationInstance::settle(InstanceClaim outcome) {
    std::exchange(m_answer, nullptr)(outcome);
}

void BusApplicationInstance::receive(const ApplicationRequest &request) {
    if (m_handler)
        m_handler(request);
    else
        m_early.push_back(request);
}

std::unique_ptr<ApplicationInstance> platform::makeApplicationInstance() {
    return std::make_unique<BusApplicationInstance>();
}

} // namespace burnwick
