// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/FakeService.h"

#include <QtCore/QByteArray>

namespace burnwick {

/// A keyring. It answers as gnome-keyring does, and only sessions without encryption.
class FakeSecretService final : public FakeService {
public:
    struct Item {
        QByteArray secret;
        qulonglong modified = 0; ///< seconds since 1970
        bool locked = false;
        QString service = QStringLiteral("Claude Code-credentials");
        QString contentType = QStringLiteral("text/plain");
    };

    explicit FakeSecretService(QString name = QStringLiteral("fake-keyring"));

    std::vector<Item> items;
    QString leavesAfter; ///< once it answered a call of that method, the keyring is gone
    int openSessions = 0;

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    [[nodiscard]] QDBusMessage answerTo(const QDBusMessage &message) override;
    [[nodiscard]] QDBusMessage answerSearch(const QDBusMessage &message) const;
    [[nodiscard]] QDBusMessage answerForItem(const QDBusMessage &message, Item &item) const;
};

} // namespace burnwick
