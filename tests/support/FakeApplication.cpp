// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/FakeApplication.h"

#include "platform/linux/instance/BusApplicationInstance.h"

#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusError>

namespace burnwick {

FakeApplication::FakeApplication(Conduct conduct)
    : FakeService(QStringLiteral("fake-application"), applicationBusName(), applicationObjectPath())
    , m_conduct(conduct) {
    if (conduct == Conduct::hangs)
        held = QStringList{QStringLiteral("Activate"), QStringLiteral("ActivateAction")};
}

QDBusMessage FakeApplication::answerTo(const QDBusMessage &call) {
    const QVariantList arguments = call.arguments();
    const bool named = call.member() == QLatin1String("ActivateAction");
    const auto platformData = qdbus_cast<QVariantMap>(arguments.value(named ? 2 : 0));
    m_requests += QStringLiteral("%1 token=%2 id=%3")
                      .arg(named ? arguments.value(0).toString() : call.member(),
                           platformData.value(QStringLiteral("activation-token")).toString(),
                           platformData.value(QStringLiteral("desktop-startup-id")).toString());
    if (m_conduct != Conduct::leaves)
        return call.createReply();
    QDBusConnection bus = connection();
    bus.unregisterService(applicationBusName());
    return call.createErrorReply(QDBusError::ServiceUnknown, {});
}

} // namespace burnwick
