// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/FakeSecretService.h"

#include "platform/linux/secrets/SecretServiceTypes.h"
#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusError>
#include <QtDBus/QDBusVariant>

namespace burnwick {

namespace {

const QString root = QStringLiteral("/org/freedesktop/secrets");
const QString itemPrefix = root + QStringLiteral("/collection/login/");
const QString sessionPath = root + QStringLiteral("/session/s1");

QVariant pathVariant(const QString &path) {
    return QVariant::fromValue(QDBusObjectPath(path));
}

} // namespace

FakeSecretService::FakeSecretService(QString name)
    : FakeService(std::move(name), QStringLiteral("org.freedesktop.secrets"), root) {
    secretservice::registerTypes();
}

bool FakeSecretService::handleMessage(const QDBusMessage &message, const QDBusConnection &connection) {
    FakeService::handleMessage(message, connection);
    if (message.member() == leavesAfter)
        QMetaObject::invokeMethod(this, &FakeService::leave, Qt::QueuedConnection);
    return true;
}

QDBusMessage FakeSecretService::answerTo(const QDBusMessage &message) {
    if (message.member() == QLatin1String("SearchItems"))
        return answerSearch(message);
    if (message.member() == QLatin1String("OpenSession")) {
        ++openSessions;
        return message.createReply({QVariant::fromValue(QDBusVariant(QString())), pathVariant(sessionPath)});
    }
    if (message.member() == QLatin1String("Close") && message.path() == sessionPath) {
        --openSessions;
        return message.createReply();
    }
    bool isNumber = false;
    const auto index = message.path().mid(itemPrefix.size()).toULong(&isNumber);
    if (message.path().startsWith(itemPrefix) && isNumber && index < items.size())
        return answerForItem(message, items[index]);
    return message.createErrorReply(QDBusError::UnknownMethod, message.member());
}

QDBusMessage FakeSecretService::answerSearch(const QDBusMessage &message) const {
    const auto wanted = qdbus_cast<secretservice::Attributes>(message.arguments().value(0));
    QList<QDBusObjectPath> unlocked;
    QList<QDBusObjectPath> locked;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (wanted == secretservice::Attributes{{QStringLiteral("service"), items[i].service}})
            (items[i].locked ? locked : unlocked).append(QDBusObjectPath(itemPrefix + QString::number(i)));
    }
    return message.createReply({QVariant::fromValue(unlocked), QVariant::fromValue(locked)});
}

QDBusMessage FakeSecretService::answerForItem(const QDBusMessage &message, Item &item) const {
    using secretservice::Secret;
    if (message.member() == QLatin1String("Get"))
        return message.createReply(QVariant::fromValue(QDBusVariant(item.modified)));
    const auto refuse = [&message](const char *error) {
        return message.createErrorReply(QLatin1String("org.freedesktop.Secret.Error.") + QLatin1String(error),
                                        QStringLiteral("refused"));
    };
    if (item.locked)
        return refuse("IsLocked");
    if (message.member() == QLatin1String("GetSecret")) {
        if (openSessions == 0 || message.arguments().value(0).value<QDBusObjectPath>().path() != sessionPath)
            return refuse("NoSession");
        return message.createReply(
            QVariant::fromValue(Secret{QDBusObjectPath(sessionPath), {}, item.secret, item.contentType}));
    }
    if (message.member() == QLatin1String("SetSecret")) {
        const auto secret = qdbus_cast<Secret>(message.arguments().value(0));
        if (openSessions == 0 || secret.session.path() != sessionPath)
            return refuse("NoSession");
        item.secret = secret.value;
        item.contentType = secret.contentType;
        return message.createReply();
    }
    return message.createErrorReply(QDBusError::UnknownMethod, message.member());
}

} // namespace burnwick
