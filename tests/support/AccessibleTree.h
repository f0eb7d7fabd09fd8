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

/// The address of an object on the accessibility bus.
struct AccessibleReference {
    QString service;
    QDBusObjectPath path;
};

/// The accessible objects of the programs in a private session, through the desktop's real accessibility bus
/// and registry. The programs need QT_LINUX_ACCESSIBILITY_ALWAYS_ON.
class AccessibleTree {
public:
    AccessibleTree();
    ~AccessibleTree();
    AccessibleTree(const AccessibleTree &) = delete;
    AccessibleTree &operator=(const AccessibleTree &) = delete;

    /// False when the buses did not start.
    [[nodiscard]] bool isReady() const { return m_connection.isConnected(); }
    /// The session bus that programs need for the accessibility bus.
    [[nodiscard]] const PrivateBus &sessionBus() const { return *m_session; }

    /// Returns the visible objects with a name in reading order, as "role: name": "push button: Reconnect".
    /// Checked ones end with " [checked]".
    [[nodiscard]] QStringList objects() const;
    /// Runs the first action of the visible object "role: name"; false without such an object.
    [[nodiscard]] bool press(const QString &object) const;

private:
    [[nodiscard]] QVariantList call(const AccessibleReference &object, const char *interface,
                                    const char *method, const QVariantList &arguments = {}) const;
    [[nodiscard]] std::vector<AccessibleReference> childrenOf(const AccessibleReference &object) const;
    [[nodiscard]] QString describe(const AccessibleReference &object, quint64 states) const;
    [[nodiscard]] quint64 statesOf(const AccessibleReference &object) const;
    /// Visits the visible objects below the object until a visitor returns true.
    bool visit(const AccessibleReference &object,
               const std::function<bool(const AccessibleReference &, const QString &)> &visitor) const;

    QTemporaryDir m_services;
    std::unique_ptr<PrivateBus> m_session;
    QDBusConnection m_connection;
};

} // namespace burnwick::test
