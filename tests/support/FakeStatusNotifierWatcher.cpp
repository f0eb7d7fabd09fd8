// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/FakeStatusNotifierWatcher.h"

#include "support/WaitFor.h"

#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusPendingCall>
#include <QtDBus/QDBusPendingReply>

#include <array>
#include <sys/prctl.h>
#include <utility>

namespace burnwick {

namespace {

const QString connectionName = QStringLiteral("fake-watcher");
const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString itemPath = QStringLiteral("/StatusNotifierItem");

std::string mainThreadName() {
    std::array<char, 16> name{};
    prctl(PR_GET_NAME, name.data());
    return name.data();
}

} // namespace

FakeStatusNotifierWatcher::FakeStatusNotifierWatcher(const PrivateBus &bus)
    : m_ownProcessName(mainThreadName())
    , m_connection(bus.connect(connectionName)) {
    m_connection.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                                QDBusConnection::ExportScriptableSlots);
}

FakeStatusNotifierWatcher::~FakeStatusNotifierWatcher() {
    QDBusConnection::disconnectFromBus(connectionName);
    prctl(PR_SET_NAME, m_ownProcessName.c_str());
}

void FakeStatusNotifierWatcher::takeName(const std::string &processName) {
    prctl(PR_SET_NAME, processName.c_str());
    m_registeredItems.clear();
    m_connection.registerService(watcherName);
}

void FakeStatusNotifierWatcher::dropName() {
    m_connection.unregisterService(watcherName);
}

bool FakeStatusNotifierWatcher::waitForItems(qsizetype count) const {
    return waitFor([this, count] { return m_registeredItems.size() >= count; });
}

QVariantMap FakeStatusNotifierWatcher::readItem() const {
    const QDBusMessage answer = call(itemPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                                     QStringLiteral("GetAll"), {itemInterface});
    return answer.arguments().isEmpty() ? QVariantMap() : qdbus_cast<QVariantMap>(answer.arguments().first());
}

QDBusMessage FakeStatusNotifierWatcher::callItem(const QString &method, const QVariantList &arguments) const {
    return call(itemPath, itemInterface, method, arguments);
}

QDBusMessage FakeStatusNotifierWatcher::callMenu(const QString &method, const QVariantList &arguments) const {
    return call(QStringLiteral("/MenuBar"), QStringLiteral("com.canonical.dbusmenu"), method, arguments);
}

void FakeStatusNotifierWatcher::listen() {
    for (const char *signal : {"NewTitle", "NewIcon", "NewToolTip", "NewMenu", "NewStatus",
                               "NewIconThemePath", "XAyatanaNewLabel"}) {
        m_connection.connect(m_registeredItems.value(0), itemPath, itemInterface, QLatin1String(signal), this,
                             SLOT(onItemSignal(QDBusMessage)));
    }
}

QStringList FakeStatusNotifierWatcher::takeSignals() {
    // The bus keeps the order of one sender: the reply arrives after the signals sent before it.
    static_cast<void>(readItem());
    return std::exchange(m_signals, {});
}

void FakeStatusNotifierWatcher::RegisterStatusNotifierItem(const QString &service) {
    m_registeredItems.append(service);
}

void FakeStatusNotifierWatcher::onItemSignal(const QDBusMessage &message) {
    m_signals.append(message.member());
}

QDBusMessage FakeStatusNotifierWatcher::call(const QString &path, const QString &interface,
                                             const QString &method, const QVariantList &arguments) const {
    QDBusMessage message =
        QDBusMessage::createMethodCall(m_registeredItems.value(0), path, interface, method);
    message.setArguments(arguments);
    const QDBusPendingCall pending = m_connection.asyncCall(message);
    // The item belongs to this thread: a blocking call would keep it from replying.
    static_cast<void>(waitFor([&pending] { return pending.isFinished(); }));
    return pending.reply();
}

} // namespace burnwick
