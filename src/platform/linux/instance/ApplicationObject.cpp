// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/instance/ApplicationObject.h"

#include <utility>

namespace burnwick {

namespace {

const QString tokenKey = QStringLiteral("activation-token");
const QString startupIdKey = QStringLiteral("desktop-startup-id");

StartupActivation activationIn(const QVariantMap &platformData) {
    return {platformData.value(tokenKey).toString().toStdString(),
            platformData.value(startupIdKey).toString().toStdString()};
}

} // namespace

QVariantMap platformDataOf(const StartupActivation &activation) {
    QVariantMap data;
    if (!activation.token.empty())
        data.insert(tokenKey, QString::fromStdString(activation.token));
    if (!activation.startupId.empty())
        data.insert(startupIdKey, QString::fromStdString(activation.startupId));
    return data;
}

ApplicationObject::ApplicationObject(ApplicationInstance::RequestHandler handler)
    : m_handler(std::move(handler)) {}

void ApplicationObject::Activate(const QVariantMap &platformData) {
    m_handler({ApplicationAction::showWindow, activationIn(platformData)});
}

void ApplicationObject::Open(const QStringList & /*uris*/, const QVariantMap &platformData) {
    Activate(platformData);
}

void ApplicationObject::ActivateAction(const QString &name, const QVariantList & /*parameter*/,
                                       const QVariantMap &platformData) {
    if (const auto action = applicationActionNamed(name.toStdString()))
        m_handler({*action, activationIn(platformData)});
}

} // namespace burnwick
