// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QProcess>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>
#include <QtDBus/QDBusConnection>

namespace burnwick {

/// A message bus for tests. Without a folder it starts no services, so that the services of the user's
/// desktop (portals, keyrings, notifications) are unreachable. Ends with this object, and with the process at
/// the latest.
class PrivateBus {
public:
    /// `serviceFolder` contains the services that the bus can start.
    explicit PrivateBus(const QString &serviceFolder = {});
    ~PrivateBus();
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;

    /// Returns an empty address when the daemon did not start.
    [[nodiscard]] QString address() const { return m_address; }

    /// Makes it this process's session bus. Call it before anything connects to one.
    void becomeSessionBus() const;

    /// Returns a separate connection for a peer: between two connections everything is marshalled, as between
    /// two processes. Close it with QDBusConnection::disconnectFromBus(name).
    [[nodiscard]] QDBusConnection connect(const QString &name) const;

    /// Kills the daemon.
    void kill();

    /// Stops the daemon: it handles no message before thaw().
    void freeze() const;
    void thaw() const;

private:
    QTemporaryDir m_directory;
    QProcess m_daemon;
    QString m_address;
};

/// Returns the test program's session bus; see QtTestMain.cpp.
[[nodiscard]] PrivateBus &sessionBusOfTests();

} // namespace burnwick
