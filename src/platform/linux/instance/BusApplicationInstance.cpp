// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/instance/BusApplicationInstance.h"

#include "platform/Platform.h"
#include "platform/linux/bus/BusCall.h"

#include <QtCore/QLoggingCategory>
#include <QtDBus/QDBusError>
#include <QtDBus/QDBusReply>

#include <utility>

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(instanceLog, "burnwick.instance")

const QString tokenKey = QStringLiteral("activation-token");
const QString startupIdKey = QStringLiteral("desktop-startup-id");

/// Each object has a separate connection.
QString newConnectionName() {
    static int number = 0;
    return QStringLiteral("burnwick-instance-%1").arg(++number);
}

StartupActivation activationIn(const QVariantMap &platformData) {
    return {platformData.value(tokenKey).toString().toStdString(),
            platformData.value(startupIdKey).toString().toStdString()};
}

QVariantMap platformDataOf(const StartupActivation &activation) {
    QVariantMap data;
    if (!activation.token.empty())
        data.insert(tokenKey, QString::fromStdString(activation.token));
    if (!activation.startupId.empty())
        data.insert(startupIdKey, QString::fromStdString(activation.startupId));
    return data;
}

} // namespace

QString applicationBusName() {
    return QStringLiteral("com.burnwick.Burnwick");
}

QString applicationObjectPath() {
    return QStringLiteral("/com/burnwick/Burnwick");
}

BusApplicationInstance::BusApplicationInstance(std::chrono::milliseconds claimLimit)
    : m_claimLimit(claimLimit)
    , m_connectionName(newConnectionName())
    , m_connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName)) {}

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
            this, [this] { settle(InstanceClaim::unknown); }, Qt::QueuedConnection);
        return;
    }
    // Before this process owns the name: calls may arrive at once then.
    m_connection.registerObject(applicationObjectPath(), this, QDBusConnection::ExportScriptableSlots);
    requestName();
}

void BusApplicationInstance::setRequestHandler(RequestHandler handler) {
    m_handler = std::move(handler);
    for (const ApplicationRequest &request : std::exchange(m_early, {}))
        m_handler(request);
}

void BusApplicationInstance::Activate(const QVariantMap &platformData) {
    receive({ApplicationAction::showWindow, activationIn(platformData)});
}

void BusApplicationInstance::Open(const QStringList & /*uris*/, const QVariantMap &platformData) {
    Activate(platformData);
}

void BusApplicationInstance::ActivateAction(const QString &name, const QVariantList & /*parameter*/,
                                            const QVariantMap &platformData) {
    if (const auto action = applicationActionNamed(name.toStdString()))
        receive({*action, activationIn(platformData)});
}

void BusApplicationInstance::requestName() {
    constexpr uint doNotQueue = 4;
    constexpr uint primaryOwner = 1;
    --m_claimsLeft;
    const auto call = callMessageBus(m_connection, QStringLiteral("RequestName"),
                                     {applicationBusName(), doNotQueue}, m_claimLimit);
    whenFinished(call, this, [this](const QDBusMessage &message) {
        const QDBusReply<uint> reply(message);
        if (!reply.isValid()) {
            qCWarning(instanceLog) << "the session bus does not answer:" << reply.error().message();
            settle(InstanceClaim::unknown);
        } else if (reply.value() == primaryOwner) {
            settle(InstanceClaim::first);
        } else {
            handOver();
        }
    });
}

void BusApplicationInstance::handOver() {
    const std::string action(nameOf(m_request.action));
    const QVariantMap platformData = platformDataOf(m_request.activation);
    QDBusMessage call = QDBusMessage::createMethodCall(
        applicationBusName(), applicationObjectPath(), QStringLiteral("org.freedesktop.Application"),
        action.empty() ? QStringLiteral("Activate") : QStringLiteral("ActivateAction"));
    call.setAutoStartService(false);
    if (action.empty())
        call.setArguments({platformData});
    else
        call.setArguments({QString::fromStdString(action), QVariantList(), platformData});
    // The other instance may be in its first load of the logs.
    constexpr int limit = 5'000; // ms
    whenFinished(m_connection.asyncCall(call, limit), this, [this](const QDBusMessage &message) {
        if (message.type() == QDBusMessage::ReplyMessage)
            settle(InstanceClaim::handedOver);
        else
            handOverFailed(message);
    });
}

void BusApplicationInstance::handOverFailed(const QDBusMessage &error) {
    const bool hasEnded = error.errorName() == QDBusError::errorString(QDBusError::ServiceUnknown) ||
                          error.errorName() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner");
    if (hasEnded && m_claimsLeft > 0) // the name has no owner any more
        return requestName();
    qCWarning(instanceLog) << "Burnwick runs already, but does not answer:" << error.errorMessage();
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
