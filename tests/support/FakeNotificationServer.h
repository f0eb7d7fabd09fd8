// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/FakeService.h"

#include <QtCore/QVariantMap>

#include <map>

namespace burnwick {

/// A desktop's notification server.
class FakeNotificationServer final : public FakeService {
public:
    struct Popup {
        QString application;
        QString icon;
        QString title;
        QString body;
        QStringList actions;
        QVariantMap hints;
        int timeout = 0;
    };

    /// `firstNumber` is the first notification's number.
    explicit FakeNotificationServer(QString connectionName = QStringLiteral("fake-notifications"),
                                    uint firstNumber = 1);

    QStringList capabilities{QStringLiteral("actions"), QStringLiteral("body"),
                             QStringLiteral("body-markup")};
    QStringList failing; ///< methods that reply with an error

    std::map<uint, Popup> popups; ///< the displayed ones, by number

    /// Removes the popup and sends the signal of that.
    void close(uint number);
    /// Sends the signals of a click; that of the token unless it is empty.
    void click(uint number, const QString &token = {}, const QString &action = QStringLiteral("default"));

private:
    [[nodiscard]] QDBusMessage answerTo(const QDBusMessage &message) override;
    [[nodiscard]] uint show(const QVariantList &arguments);
    void announce(const QString &signal, const QVariantList &arguments);

    uint m_nextNumber;
};

} // namespace burnwick
