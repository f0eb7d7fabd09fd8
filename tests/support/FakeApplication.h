// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/instance/BusApplicationInstance.h"
#include "support/FakeService.h"

#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusError>

namespace burnwick {

/// A running instance of Burnwick as another one sees it on the bus.
class FakeApplication final : public FakeService {
public:
    enum class Conduct {
        answers,
        hangs, ///< accepts calls and never replies
        leaves ///< releases the name and fails the call as the bus does for a name without an owner
    };

    explicit FakeApplication(Conduct conduct = Conduct::answers)
        : FakeService(QStringLiteral("fake-application"), applicationBusName(), applicationObjectPath())
        , m_conduct(conduct) {
        if (conduct == Conduct::hangs)
            held = QStringList{QStringLiteral("Activate"), QStringLiteral("ActivateAction")};
    }

    /// Returns the requests that were replied to, in order: "Activate token=x id=y", "settings token=x id=y".
    [[nodiscard]] QStringList requests() const { return m_requests; }

private:
    [[nodiscard]] QDBusMessage answerTo(const QDBusMessage &call) override {
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

    Conduct m_conduct;
    QStringList m_requests;
};

} // namespace burnwick
