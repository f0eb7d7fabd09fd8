// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/AccessibleTree.h"

#include <QtCore/QFile>
#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusReply>

namespace burnwick::test {

namespace {

const auto connectionName = QStringLiteral("accessible tree");
constexpr const char *accessible = "org.a11y.atspi.Accessible";
constexpr int patienceInMilliseconds = 5'000;

// Bits of a state set, as the protocol numbers them.
constexpr quint64 checkedState = quint64{1} << 4;
constexpr quint64 showingState = quint64{1} << 25;

const AccessibleReference registryRoot{QStringLiteral("org.a11y.atspi.Registry"),
                                       QDBusObjectPath(QStringLiteral("/org/a11y/atspi/accessible/root"))};

} // namespace

AccessibleTree::AccessibleTree()
    : m_connection(connectionName) {
    const QString service = QStringLiteral("org.a11y.Bus.service");
    QFile::copy(QStringLiteral("/usr/share/dbus-1/services/") + service, m_services.filePath(service));
    m_session = std::make_unique<PrivateBus>(m_services.path());

    const QString launcherConnection = connectionName + QStringLiteral(" launcher");
    QDBusConnection session = m_session->connect(launcherConnection);
    const QDBusReply<QString> address = session.call(
        QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                       QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress")),
        QDBus::Block, patienceInMilliseconds);
    QDBusConnection::disconnectFromBus(launcherConnection);
    m_connection = QDBusConnection::connectToBus(address.value(), connectionName);
}

AccessibleTree::~AccessibleTree() {
    QDBusConnection::disconnectFromBus(connectionName);
}

QStringList AccessibleTree::objects() const {
    QStringList all;
    visit(registryRoot, [&all](const AccessibleReference &, const QString &description) {
        if (!description.endsWith(QLatin1String(": ")))
            all += description;
        return false;
    });
    return all;
}

bool AccessibleTree::press(const QString &object) const {
    return visit(registryRoot, [&](const AccessibleReference &reference, const QString &description) {
        if (description != object && description != object + QLatin1String(" [checked]"))
            return false;
        return call(reference, "org.a11y.atspi.Action", "DoAction", {0}).value(0).toBool();
    });
}

QVariantList AccessibleTree::call(const AccessibleReference &object, const char *interface,
                                  const char *method, const QVariantList &arguments) const {
    QDBusMessage message = QDBusMessage::createMethodCall(
        object.service, object.path.path(), QString::fromLatin1(interface), QString::fromLatin1(method));
    message.setArguments(arguments);
    const QDBusMessage reply = m_connection.call(message, QDBus::Block, patienceInMilliseconds);
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments() : QVariantList();
}

std::vector<AccessibleReference> AccessibleTree::childrenOf(const AccessibleReference &object) const {
    const auto children = call(object, accessible, "GetChildren").value(0).value<QDBusArgument>();
    std::vector<AccessibleReference> references;
    if (children.currentType() != QDBusArgument::ArrayType)
        return references;
    children.beginArray();
    while (!children.atEnd()) {
        AccessibleReference &reference = references.emplace_back();
        children.beginStructure();
        children >> reference.service >> reference.path;
        children.endStructure();
    }
    children.endArray();
    return references;
}

quint64 AccessibleTree::statesOf(const AccessibleReference &object) const {
    const auto halves = qdbus_cast<QList<uint>>(call(object, accessible, "GetState").value(0));
    return halves.size() == 2 ? halves[0] | quint64{halves[1]} << 32 : 0;
}

QString AccessibleTree::describe(const AccessibleReference &object, quint64 states) const {
    const QString role = call(object, accessible, "GetRoleName").value(0).toString();
    const auto name = call(object, "org.freedesktop.DBus.Properties", "Get",
                           {QString::fromLatin1(accessible), QStringLiteral("Name")})
                          .value(0);
    return role + QLatin1String(": ") + qvariant_cast<QDBusVariant>(name).variant().toString() +
           QLatin1String((states & checkedState) != 0 ? " [checked]" : "");
}

bool AccessibleTree::visit(
    const AccessibleReference &object,
    const std::function<bool(const AccessibleReference &, const QString &)> &visitor) const {
    for (const AccessibleReference &child : childrenOf(object)) {
        const quint64 states = statesOf(child);
        // Applications never have the state.
        const bool isApplication = object.service == registryRoot.service;
        if (!isApplication && (states & showingState) == 0)
            continue;
        if (visitor(child, describe(child, states)) || visit(child, visitor))
            return true;
    }
    return false;
}

} // namespace burnwick::test
