// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/PrivateBus.h"

#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusObjectPath>

#include <functional>
#include <memory>
#include <vector>

namespace burnwick::test {

/// Where an object of a program is found on the bus of assistive technology.
struct AccessibleReference {
    QString service;
    QDBusObjectPath path;
};

/// What a user of assistive technology finds in the programs of its session that were started with
/// QT_LINUX_ACCESSIBILITY_ALWAYS_ON, through the desktop's own accessibility bus and registry.
class AccessibleTree {
public:
    AccessibleTree();
    ~AccessibleTree();
    AccessibleTree(const AccessibleTree &) = delete;
    AccessibleTree &operator=(const AccessibleTree &) = delete;

    /// False when the buses did not start.
    [[nodiscard]] bool isReady() const { return m_connection.isConnected(); }
    /// Where programs find the accessibility bus. For a session of its own: programs are only found there.
    [[nodiscard]] const PrivateBus &sessionBus() const { return *m_session; }

    /// The objects that can be seen, each as its role and its name: "push button: Reconnect". Those that are
    /// checked end with " [checked]". In reading order; those without a name are left out.
    [[nodiscard]] QStringList objects() const;
    /// Does what a press on the object of that role and name does; false when there is none.
    [[nodiscard]] bool press(const QString &object) const;

private:
    [[nodiscard]] QVariantList call(const AccessibleReference &object, const char *interface,
                                    const char *method, const QVariantList &arguments = {}) const;
    [[nodiscard]] std::vector<AccessibleReference> childrenOf(const AccessibleReference &object) const;
    [[nodiscard]] QString describe(const AccessibleReference &object, quint64 states) const;
    [[nodiscard]] quint64 statesOf(const AccessibleReference &object) const;
    /// Visits what can be seen below the object until a visitor says that it has found what it sought.
    bool visit(const AccessibleReference &object,
               const std::function<bool(const AccessibleReference &, const QString &)> &visitor) const;

    QTemporaryDir m_services;
    std::unique_ptr<PrivateBus> m_session;
    QDBusConnection m_connection;
};

} // namespace burnwick::test
