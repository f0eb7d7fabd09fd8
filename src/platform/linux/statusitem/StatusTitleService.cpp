// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/statusitem/StatusTitleService.h"

#include "platform/linux/bus/BusCall.h"

#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusMetaType>

#include <utility>

namespace burnwick {

namespace {

/// Each object has a separate connection.
QString newConnectionName() {
    static int number = 0;
    return QStringLiteral("burnwick-title-%1").arg(++number);
}

} // namespace

QString statusTitleBusName() {
    return QStringLiteral("com.burnwick.Burnwick.StatusTitle");
}

QString statusTitlePath() {
    return QStringLiteral("/com/burnwick/Burnwick/StatusTitle");
}

QString shellExtensionBusName() {
    return QStringLiteral("com.burnwick.Burnwick.ShellExtension");
}

StatusTitleService::StatusTitleService(const StatusItemContent &content, StatusItem::ActivateHandler handler)
    : m_object(content, std::move(handler))
    , m_connectionName(newConnectionName())
    , m_connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName)) {
    if (!isConnected())
        return;
    qDBusRegisterMetaType<TitlePart>();
    qDBusRegisterMetaType<QList<TitlePart>>();
    qDBusRegisterMetaType<TitleLimit>();
    qDBusRegisterMetaType<QList<TitleLimit>>();
    // Before this process owns the name: a shell reads the properties at once then.
    m_connection.registerObject(statusTitlePath(), &m_object,
                                QDBusConnection::ExportAllProperties |
                                    QDBusConnection::ExportScriptableSlots);
    // Waits in the bus's queue behind another instance, which may be ending.
    constexpr uint queue = 0;
    static_cast<void>(
        callMessageBus(m_connection, QStringLiteral("RequestName"), {statusTitleBusName(), queue}));
    // The bus replies in order, so the title's owner is known when the extension's is.
    m_title.emplace(m_connection, statusTitleBusName());
    m_extension.emplace(m_connection, shellExtensionBusName());
    connect(&*m_title, &ServiceOwner::changed, this, [this] {
        if (m_isDrawn)
            updateDrawn();
    });
    connect(&*m_extension, &ServiceOwner::changed, this, &StatusTitleService::updateDrawn);
}

StatusTitleService::~StatusTitleService() {
    m_title.reset();
    m_extension.reset();
    QDBusConnection::disconnectFromBus(m_connectionName);
}

void StatusTitleService::setContent(const StatusItemContent &content) {
    const QVariantMap changed = m_object.setContent(content);
    if (changed.isEmpty() || !isConnected())
        return;
    QDBusMessage signal =
        QDBusMessage::createSignal(statusTitlePath(), QStringLiteral("org.freedesktop.DBus.Properties"),
                                   QStringLiteral("PropertiesChanged"));
    signal.setArguments({QStringLiteral("com.burnwick.Burnwick.StatusTitle1"), changed, QStringList()});
    m_connection.send(signal);
}

void StatusTitleService::updateDrawn() {
    const bool isDrawn = m_title->name() == m_connection.baseService() && !m_extension->name().isEmpty();
    if (m_isDrawn == isDrawn)
        return;
    m_isDrawn = isDrawn;
    Q_EMIT drawnChanged(isDrawn);
}

} // namespace burnwick
