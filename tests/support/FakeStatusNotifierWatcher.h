// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/PrivateBus.h"

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>

#include <string>

namespace burnwick {

/// A desktop's status area as far as an item can tell: a watcher on a connection of its own, in a process
/// that goes by the host's name. Only the first item that registers is looked at.
class FakeStatusNotifierWatcher final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")

public:
    explicit FakeStatusNotifierWatcher(const PrivateBus &bus);
    ~FakeStatusNotifierWatcher() override;

    /// Starts as a host of that process name: the main thread's name, which /proc shows, is the process's.
    void takeName(const std::string &processName);
    void dropName();

    /// The items that registered, by bus name, in their order.
    [[nodiscard]] QStringList registeredItems() const { return m_registeredItems; }
    [[nodiscard]] bool waitForItems(qsizetype count) const;

    /// What a host reads of the first item; empty on an error.
    [[nodiscard]] QVariantMap readItem() const;
    /// Calls the first item and waits for the answer.
    QDBusMessage callItem(const QString &method, const QVariantList &arguments = {}) const;
    QDBusMessage callMenu(const QString &method, const QVariantList &arguments) const;

    /// Records the item's signals from now on.
    void listen();
    /// The names of the signals so far, in their order. Those sent before this call are all there.
    [[nodiscard]] QStringList takeSignals();

public Q_SLOTS:
    Q_SCRIPTABLE void RegisterStatusNotifierItem(const QString &service);

private Q_SLOTS:
    void onItemSignal(const QDBusMessage &message);

private:
    [[nodiscard]] QDBusMessage call(const QString &path, const QString &interface, const QString &method,
                                    const QVariantList &arguments) const;

    std::string m_ownProcessName;
    QDBusConnection m_connection;
    QStringList m_registeredItems;
    QStringList m_signals;
};

} // namespace burnwick
