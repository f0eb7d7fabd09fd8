// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ApplicationInstance.h"

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QVariantList>
#include <QtCore/QVariantMap>

namespace burnwick {

/// The desktop's data for an activation, as the interface org.freedesktop.Application carries it.
[[nodiscard]] QVariantMap platformDataOf(const StartupActivation &activation);

/// The object behind the D-Bus interface org.freedesktop.Application.
class ApplicationObject final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit ApplicationObject(ApplicationInstance::RequestHandler handler);

public Q_SLOTS:
    // Named by the protocol. Burnwick opens no files, and its actions take no parameters.
    Q_SCRIPTABLE void Activate(const QVariantMap &platformData);
    Q_SCRIPTABLE void Open(const QStringList &uris, const QVariantMap &platformData);
    Q_SCRIPTABLE void ActivateAction(const QString &name, const QVariantList &parameter,
                                     const QVariantMap &platformData);

private:
    ApplicationInstance::RequestHandler m_handler;
};

} // namespace burnwick
