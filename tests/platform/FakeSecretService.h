// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/secrets/SecretServiceTypes.h"
#include "support/FakeService.h"

#include <QtCore/QByteArray>
#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusError>
#include <QtDBus/QDBusVariant>

namespace burnwick {

/// A keyring with gnome-keyring's replies. Supports sessions without encryption only.
class FakeSecretService final : public FakeService {
public:
    struct Item {
        QByteArray secret;
        qulonglong modified = 0; ///< seconds since 1970
        bool locked = false;
        QString service = QStringLiteral("Claude Code-credentials");
        QString contentType = QStringLiteral("text/plain");
    };

    explicit FakeSecretService(QString name = QStringLiteral("fake-keyring"))
        : FakeService(std::move(name), QStringLiteral("org.freedesktop.secrets"),
                      QStringLiteral("/org/freedesktop/secrets")) {
        secretservice::registerTypes();
    }

    std::vector<Item> items;
    int openSessions = 0;

private:
    [[nodiscard]] QDBusMessage answerTo(const QDBusMessage &message) override {
        const QString method = message.member();
        if (method == QLatin1String("SearchItems"))
            return answerSearch(message);
        if (method == QLatin1String("OpenSession")) {
            ++openSessions;
            return message.createReply({QVariant::fromValue(QDBusVariant(QString())),
                                        QVariant::fromValue(QDBusObjectPath(m_session))});
        }
        if (method == QLatin1String("Close") && message.path() == m_session) {
            --openSessions;
            return message.createReply();
        }
        const auto index = message.path().startsWith(m_prefix) ? message.path().mid(m_prefix.size()).toULong()
                                                               : items.size();
        return index < items.size() ? answerForItem(message, items[index])
                                    : message.createErrorReply(QDBusError::UnknownMethod, method);
    }
    [[nodiscard]] QDBusMessage answerSearch(const QDBusMessage &message) const {
        const auto wanted = qdbus_cast<secretservice::Attributes>(message.arguments().value(0));
        QList<QDBusObjectPath> unlocked;
        QList<QDBusObjectPath> locked;
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (wanted == secretservice::Attributes{{QStringLiteral("service"), items[i].service}})
                (items[i].locked ? locked : unlocked).append(QDBusObjectPath(m_prefix + QString::number(i)));
        }
        return message.createReply({QVariant::fromValue(unlocked), QVariant::fromValue(locked)});
    }
    [[nodiscard]] QDBusMessage answerForItem(const QDBusMessage &message, Item &item) const {
        using secretservice::Secret;
        const QString method = message.member();
        if (method == QLatin1String("Get"))
            return message.createReply(QVariant::fromValue(QDBusVariant(item.modified)));
        const bool isSet = method == QLatin1String("SetSecret");
        const QVariant argument = message.arguments().value(0);
        const QString session =
            isSet ? qdbus_cast<Secret>(argument).session.path() : argument.value<QDBusObjectPath>().path();
        if (item.locked || openSessions == 0 || session != m_session)
            return message.createErrorReply(QStringLiteral("org.freedesktop.Secret.Error.NoSession"), {});
        if (!isSet)
            return message.createReply(
                QVariant::fromValue(Secret{QDBusObjectPath(m_session), {}, item.secret, item.contentType}));
        const auto secret = qdbus_cast<Secret>(argument);
        item.secret = secret.value;
        item.contentType = secret.contentType;
        return message.createReply();
    }

    const QString m_session = QStringLiteral("/org/freedesktop/secrets/session/s1");
    const QString m_prefix = QStringLiteral("/org/freedesktop/secrets/collection/login/");
};

} // namespace burnwick
