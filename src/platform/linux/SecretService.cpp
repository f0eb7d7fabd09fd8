// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/SecretService.h"

#include "platform/linux/SecretServiceTypes.h"

#include <QCoroDBus>

#include <QtCore/QDeadlineTimer>
#include <QtDBus/QDBusError>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusObjectPath>
#include <QtDBus/QDBusPendingCall>
#include <QtDBus/QDBusPendingReply>
#include <QtDBus/QDBusVariant>

namespace burnwick::secretservice {

namespace {

constexpr QLatin1String servicePath("/org/freedesktop/secrets");
constexpr QLatin1String serviceInterface("org.freedesktop.Secret.Service");
constexpr QLatin1String itemInterface("org.freedesktop.Secret.Item");
constexpr QLatin1String sessionInterface("org.freedesktop.Secret.Session");

/// Calls one peer, all calls together within one limit.
struct Caller {
    QDBusConnection bus;
    QDeadlineTimer deadline;
    QString peer;

    [[nodiscard]] QDBusPendingCall call(const QString &path, const QString &interface, const QString &method,
                                        const QVariantList &arguments) const {
        const qint64 remaining = deadline.remainingTime();
        if (remaining <= 0)
            return QDBusPendingCall::fromError(
                QDBusError(QDBusError::Timeout, QStringLiteral("the keyring takes too long")));
        QDBusMessage message = QDBusMessage::createMethodCall(peer, path, interface, method);
        message.setArguments(arguments);
        return bus.asyncCall(message, static_cast<int>(remaining));
    }
};

/// An item, and a session in which secrets travel as they are: the bus is the user's own.
struct OpenItem {
    Caller caller;
    QDBusObjectPath item;
    QDBusObjectPath session;
};

/// The peer that owns the keyring's name. Calls to that peer start no service, and fail at once when another
/// one takes its place.
QCoro::Task<std::optional<Caller>> findKeyring(QDBusConnection bus, std::chrono::milliseconds limit) {
    Caller caller{bus, QDeadlineTimer(limit), QStringLiteral("org.freedesktop.DBus")};
    const auto call =
        caller.call(QStringLiteral("/org/freedesktop/DBus"), caller.peer, QStringLiteral("GetNameOwner"),
                    {QStringLiteral("org.freedesktop.secrets")});
    const QDBusMessage answer = co_await call;
    const QDBusPendingReply<QString> owner(answer);
    std::optional<Caller> keyring;
    if (owner.isValid()) {
        caller.peer = owner.value();
        keyring = caller;
    }
    co_return keyring;
}

/// In seconds since 1970; 0 when it is unknown.
QCoro::Task<qulonglong> modificationTime(Caller caller, QDBusObjectPath item) {
    const auto call = caller.call(item.path(), QStringLiteral("org.freedesktop.DBus.Properties"),
                                  QStringLiteral("Get"), {itemInterface, QStringLiteral("Modified")});
    const QDBusMessage answer = co_await call;
    const QDBusPendingReply<QDBusVariant> time(answer);
    co_return time.isValid() ? time.value().variant().toULongLong() : 0;
}

QCoro::Task<std::optional<QDBusObjectPath>> findNewestItem(Caller caller, QString service) {
    const Attributes attributes{{QStringLiteral("service"), service}};
    const auto call = caller.call(servicePath, serviceInterface, QStringLiteral("SearchItems"),
                                  {QVariant::fromValue(attributes)});
    const QDBusMessage answer = co_await call;
    const QDBusPendingReply<QList<QDBusObjectPath>, QList<QDBusObjectPath>> unlockedAndLocked(answer);
    const auto items =
        unlockedAndLocked.isValid() ? unlockedAndLocked.argumentAt<0>() : QList<QDBusObjectPath>();

    std::optional<QDBusObjectPath> newest;
    if (items.size() == 1)
        newest = items.first();
    qulonglong newestTime = 0;
    for (qsizetype i = 0; i < items.size() && items.size() > 1; ++i) {
        const qulonglong time = co_await modificationTime(caller, items[i]);
        if (!newest || time > newestTime) {
            newest = items[i];
            newestTime = time;
        }
    }
    co_return newest;
}

QCoro::Task<std::optional<OpenItem>> openNewestItem(QDBusConnection bus, QString service,
                                                    std::chrono::milliseconds limit) {
    registerTypes();
    const auto keyring = co_await findKeyring(bus, limit);
    if (!keyring)
        co_return std::optional<OpenItem>();
    const auto item = co_await findNewestItem(*keyring, service);
    if (!item)
        co_return std::optional<OpenItem>();
    const auto call = keyring->call(servicePath, serviceInterface, QStringLiteral("OpenSession"),
                                    {QStringLiteral("plain"), QVariant::fromValue(QDBusVariant(QString()))});
    const QDBusMessage answer = co_await call;
    const QDBusPendingReply<QDBusVariant, QDBusObjectPath> opened(answer);
    std::optional<OpenItem> open;
    if (opened.isValid())
        open = OpenItem{*keyring, *item, opened.argumentAt<1>()};
    co_return open;
}

void closeSession(const OpenItem &open) {
    // Nothing hangs on the answer.
    static_cast<void>(open.caller.call(open.session.path(), sessionInterface, QStringLiteral("Close"), {}));
}

} // namespace

QCoro::Task<std::optional<QByteArray>> readSecret(QDBusConnection bus, QString service,
                                                  std::chrono::milliseconds limit) {
    const auto open = co_await openNewestItem(bus, service, limit);
    if (!open)
        co_return std::optional<QByteArray>();
    const auto call = open->caller.call(open->item.path(), itemInterface, QStringLiteral("GetSecret"),
                                        {QVariant::fromValue(open->session)});
    const QDBusMessage answer = co_await call;
    closeSession(*open);
    const QDBusPendingReply<Secret> secret(answer);
    std::optional<QByteArray> value;
    if (secret.isValid())
        value = secret.value().value;
    co_return value;
}

QCoro::Task<bool> replaceSecret(QDBusConnection bus, QString service, QByteArray secret,
                                std::chrono::milliseconds limit) {
    const auto open = co_await openNewestItem(bus, service, limit);
    if (!open)
        co_return false;
    const Secret replacement{open->session, {}, secret, QStringLiteral("text/plain")};
    const auto call = open->caller.call(open->item.path(), itemInterface, QStringLiteral("SetSecret"),
                                        {QVariant::fromValue(replacement)});
    const QDBusMessage answer = co_await call;
    closeSession(*open);
    co_return answer.type() == QDBusMessage::ReplyMessage;
}

} // namespace burnwick::secretservice
