// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/bus/BusCall.h"

#include <QtCore/QTimer>
#include <QtDBus/QDBusPendingCallWatcher>

#include <utility>

namespace burnwick {

QDBusPendingCall callMessageBus(const QDBusConnection &connection, const QString &method,
                                const QVariantList &arguments, std::chrono::milliseconds limit) {
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                                       QStringLiteral("/org/freedesktop/DBus"),
                                                       QStringLiteral("org.freedesktop.DBus"), method);
    call.setArguments(arguments);
    return connection.asyncCall(call, static_cast<int>(limit.count()));
}

void whenFinished(const QDBusPendingCall &call, QObject *context,
                  std::function<void(const QDBusMessage &replyOrError)> handler) {
    // A watcher never emits finished() for a call that is finished already: one without a bus, or with a fast
    // reply. Signals received before that reply are delivered before the timer fires.
    if (call.isFinished()) {
        QTimer::singleShot(0, context,
                           [handler = std::move(handler), reply = call.reply()] { handler(reply); });
        return;
    }
    auto *const watcher = new QDBusPendingCallWatcher(call, context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context,
                     [watcher, handler = std::move(handler)] {
                         watcher->deleteLater();
                         handler(watcher->reply());
                     });
}

} // namespace burnwick
