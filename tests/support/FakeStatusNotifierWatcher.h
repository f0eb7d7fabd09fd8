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

/// A desktop's status area as an item sees it: a watcher on a separate connection, in a process with the
/// host's name. Reads only the first registered item.
class FakeStatusNotifierWatcher final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")

public:
    explicit FakeStatusNotifierWatcher(const PrivateBus &bus);
    ~FakeStatusNotifierWatcher() override;

    /// Owns the watcher's name as a host of that process name, which /proc shows for the main thread.
    void takeName(const std::string &processName);
    void dropName();

    /// Returns the bus names of the registered items, in order.
    [[nodiscard]] QStringList registeredItems() const { return m_registeredItems; }
    [[nodiscard]] bool waitForItems(qsizetype count) const;

    /// Returns the first item's properties; empty on an error.
    [[nodiscard]] QVariantMap readItem() const;
    /// Calls the first item and waits for the reply.
    QDBusMessage callItem(const QString &method, const QVariantList &arguments = {}) const;
    QDBusMessage callMenu(const QString &method, const QVariantList &arguments) const;

    /// Records the item's signals from now on.
    void listen();
    /// Returns the names of all signals sent before this call, in order, and clears the record.
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
