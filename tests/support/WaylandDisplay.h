// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/LogTreeFixture.h"

#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

namespace burnwick::test {

/// The Wayland compositor sway with one screen that nobody sees, without devices of input and without an X
/// server. Ends with this object, and with the process at the latest. Windows are named by their titles.
class WaylandDisplay {
public:
    WaylandDisplay();
    ~WaylandDisplay();
    WaylandDisplay(const WaylandDisplay &) = delete;
    WaylandDisplay &operator=(const WaylandDisplay &) = delete;

    /// Returns the value of WAYLAND_DISPLAY, a path; empty if the compositor did not start.
    [[nodiscard]] QString name() const { return m_name; }

    /// Returns the titles of all windows, of each workspace.
    [[nodiscard]] QStringList windows() const;
    /// Returns the title of the window that has the keyboard focus; empty without one.
    [[nodiscard]] QString focused() const;
    /// Executes a command of sway's configuration; returns false on failure.
    bool run(const QString &command) const;

private:
    [[nodiscard]] QByteArray message(const QStringList &arguments) const;
    [[nodiscard]] std::vector<QJsonObject> nodes() const;

    TemporaryDirectory m_directory;
    QProcess m_compositor;
    QString m_socket; ///< of sway's own protocol
    QString m_name;
};

} // namespace burnwick::test
