// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/secrets/SecretService.h"

#include "platform/linux/bus/SessionBus.h"
#include "platform/linux/secrets/SecretServiceTypes.h"

#include <QCoroDBus>
#include <QCoroFuture>

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

/// Returns the owner of the keyring's name. Calls of its unique name start no service, and fail at once after
/// another keyring replaced it.
QCoro::Task<std::optional<Caller>> findKeyring(QDeadlineTimer deadline) {
    auto connecting = connectToBus(sessionBusAddress(), QStringLiteral("burnwick-keyring"));
    const auto bus = co_await connecting;
    std::optional<Caller> keyring;
    if (!bus)
        co_return keyring;
    Caller caller{*bus, deadline, QStringLiteral("org.freedesktop.DBus")};
    const auto call =
        caller.call(QStringLiteral("/org/freedesktop/DBus"), caller.peer, QStringLiteral("GetNameOwner"),
                    {QStringLiteral("org.freedesktop.secrets")});
    const QDBusMessage answer = co_await call;
    const QDBusPendingReply<QString> owner(answer);
    if (owner.isValid()) {
        caller.peer = owner.value();
        keyring = caller;
    }
    co_return keyring;
}

/// Returns seconds since 1970; 0 when unknown.
QCoro::Task<qulonglong> modificationTime(Caller caller, QDBusObjectPath item) {
    const auto call = caller.call(item.path(), QStringLiteral("org.freedesktop.DBus.Properties"),
                                  QStringLiteral("Get"), {itemInterface, QStringLiteral("Modified")});
    const QDBusMessage answer = co_await call;
    const QDBusPendingReply<QDBusVariant> time(answer);
    co_return time.isValid() ? time.value().variant().toULongLong() : 0;
}

/// Returns the item that was modified last; absent when that one is locked.
QCoro::Task<std::optional<QDBusObjectPath>> findNewestItem(Caller caller, QString service) {
    const Attributes attributes{{QStringLiteral("service"), service}};
    const auto call = caller.call(servicePath, serviceInterface, QStringLiteral("SearchItems"),
                                  {QVariant::fromValue(attributes)});
    const QDBusMessage answer = co_await call;
    const QDBusPendingReply<QList<QDBusObjectPath>, QList<QDBusObjectPath>> found(answer);
    const auto unlocked = found.isValid() ? found.argumentAt<0>() : QList<QDBusObjectPath>();
    const auto items = found.isValid() ? unlocked + found.argumentAt<1>() : unlocked;

    qsizetype newest = 0;
    qulonglong newestTime = 0;
    for (qsizetype i = 0; i < items.size() && items.size() > 1; ++i) {
        const qulonglong time = co_await modificationTime(caller, items[i]);
        if (time > newestTime) {
            newest = i;
            newestTime = time;
        }
    }
    co_return newest < unlocked.size() ? std::optional(unlocked[newest]) : std::nullopt;
}

/// Opens a session without encryption: the bus is the user's.
QCoro::Task<std::optional<QDBusObjectPath>> openSession(Caller caller) {
    const auto call = caller.call(servicePath, serviceInterface, QStringLiteral("OpenSession"),
                                  {QStringLiteral("plain"), QVariant::fromValue(QDBusVariant(QString()))});
    const QDBusMessage answer = co_await call;
    const QDBusPendingReply<QDBusVariant, QDBusObjectPath> opened(answer);
    co_return opened.isValid() ? std::optional(opened.argumentAt<1>()) : std::nullopt;
}

void closeSession(const Caller &caller, const QDBusObjectPath &session) {
    static_cast<void>(caller.call(session.path(), sessionInterface, QStringLiteral("Close"), {}));
}

QCoro::Task<std::optional<Secret>> secretOf(Caller caller, QDBusObjectPath session, QString item) {
    const auto call =
        caller.call(item, itemInterface, QStringLiteral("GetSecret"), {QVariant::fromValue(session)});
    const QDBusMessage answer = co_await call;
    const QDBusPendingReply<Secret> secret(answer);
    co_return secret.isValid() ? std::optional(secret.value()) : std::nullopt;
}

} // namespace

QCoro::Task<std::optional<ItemSecret>> readSecret(QString service, QDeadlineTimer deadline) {
    registerTypes();
    std::optional<ItemSecret> found;
    const auto keyring = co_await findKeyring(deadline);
    if (!keyring)
        co_return found;
    const auto item = co_await findNewestItem(*keyring, service);
    if (!item)
        co_return found;
    const auto session = co_await openSession(*keyring);
    if (!session)
        co_return found;
    const auto secret = co_await secretOf(*keyring, *session, item->path());
    closeSession(*keyring, *session);
    if (secret)
        found = ItemSecret{secret->value, item->path()};
    co_return found;
}

QCoro::Task<bool> replaceSecret(ItemSecret secret, QDeadlineTimer deadline) {
    registerTypes();
    const auto keyring = co_await findKeyring(deadline);
    if (!keyring)
        co_return false;
    const auto session = co_await openSession(*keyring);
    if (!session)
        co_return false;
    bool replaced = false;
    const auto former = co_await secretOf(*keyring, *session, secret.item);
    if (former) {
        const Secret replacement{*session, {}, secret.value, former->contentType};
        const auto call = keyring->call(secret.item, itemInterface, QStringLiteral("SetSecret"),
                                        {QVariant::fromValue(replacement)});
        const QDBusMessage answer = co_await call;
        replaced = answer.type() == QDBusMessage::ReplyMessage;
    }
    closeSession(*keyring, *session);
    co_return replaced;
}

} // namespace burnwick::secretservice
