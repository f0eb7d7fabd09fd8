// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QProcess>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>
#include <QtDBus/QDBusConnection>

namespace burnwick {

/// A message bus of the test's own. By itself it starts no services, so nothing of the user's desktop
/// (portals, keyrings, notifications) can be reached through it. Ends with this object, and with the process
/// at the latest.
class PrivateBus {
public:
    /// It starts the services of that folder, if one is named.
    explicit PrivateBus(const QString &serviceFolder = {});
    ~PrivateBus();
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;

    /// Empty when the daemon did not start.
    [[nodiscard]] QString address() const { return m_address; }

    /// Makes it this process's session bus; before anything connects to one.
    void becomeSessionBus() const;

    /// Another connection to it, for a peer to live on: between two connections everything is marshalled, as
    /// between two processes. Close with QDBusConnection::disconnectFromBus(name).
    [[nodiscard]] QDBusConnection connect(const QString &name) const;

    /// Ends the daemon, as if it had crashed.
    void kill();

    /// Stops the daemon: what it is sent waits for thaw().
    void freeze() const;
    void thaw() const;

private:
    QTemporaryDir m_directory;
    QProcess m_daemon;
    QString m_address;
};

/// The bus that the test program runs on; see QtTestMain.cpp.
[[nodiscard]] PrivateBus &sessionBusOfTests();

} // namespace burnwick
