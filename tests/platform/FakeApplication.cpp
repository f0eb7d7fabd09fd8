// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/FakeApplication.h"

#include "platform/linux/BusApplicationInstance.h"
#include "support/PrivateBus.h"

#include <QtDBus/QDBusError>
#include <QtDBus/QDBusMessage>

namespace burnwick {

namespace {

const QString connectionName = QStringLiteral("fake-application");

} // namespace

FakeApplication::FakeApplication(Conduct conduct)
    : m_conduct(conduct)
    , m_bus(sessionBusOfTests().connect(connectionName)) {
    m_bus.registerObject(applicationObjectPath(), this, QDBusConnection::ExportScriptableSlots);
    m_bus.registerService(applicationBusName());
}

FakeApplication::~FakeApplication() {
    QDBusConnection::disconnectFromBus(connectionName);
}

void FakeApplication::Activate(const QVariantMap &platformData) {
    take(QStringLiteral("Activate"), platformData);
}

void FakeApplication::ActivateAction(const QString &name, const QVariantList & /*parameter*/,
                                     const QVariantMap &platformData) {
    take(name, platformData);
}

void FakeApplication::take(const QString &what, const QVariantMap &platformData) {
    m_requests += QStringLiteral("%1 token=%2 id=%3")
                      .arg(what, platformData.value(QStringLiteral("activation-token")).toString(),
                           platformData.value(QStringLiteral("desktop-startup-id")).toString());
    setDelayedReply(m_conduct == Conduct::hangs);
    if (m_conduct == Conduct::leaves) {
        m_bus.unregisterService(applicationBusName());
        sendErrorReply(QDBusError::ServiceUnknown);
    }
}

} // namespace burnwick
