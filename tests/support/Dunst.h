// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/LogTreeFixture.h"
#include "support/PrivateBus.h"
#include "support/VirtualDisplay.h"

#include <QtCore/QVariantList>
#include <QtDBus/QDBusMessage>

namespace burnwick::test {

/// A message bus that starts dunst, a real notification server, on a virtual display at the first call.
class Dunst {
public:
    Dunst();
    ~Dunst();
    Dunst(const Dunst &) = delete;
    Dunst &operator=(const Dunst &) = delete;

    [[nodiscard]] const PrivateBus &bus() const { return m_bus; }
    [[nodiscard]] bool runs() const;
    /// Kills the server.
    void end() const;

    /// Removes all notifications from the display. Returns all since the server's start, in order, each as
    /// title and body in markup: "Quota Alert: You've used 84%".
    [[nodiscard]] QStringList closeAll() const;

private:
    QDBusMessage call(const QString &interface, const QString &method,
                      const QVariantList &arguments = {}) const;

    VirtualDisplay m_display;
    TemporaryDirectory m_directory;
    PrivateBus m_bus;
    QDBusConnection m_observer;
};

} // namespace burnwick::test
