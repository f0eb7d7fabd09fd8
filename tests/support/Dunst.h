// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/LogTreeFixture.h"
#include "support/PrivateBus.h"
#include "support/VirtualDisplay.h"

#include <QtCore/QVariantList>
#include <QtDBus/QDBusMessage>

namespace burnwick::test {

/// A message bus that starts dunst, a real notification server, on a display of its own when it is called.
class Dunst {
public:
    Dunst();
    ~Dunst();
    Dunst(const Dunst &) = delete;
    Dunst &operator=(const Dunst &) = delete;

    [[nodiscard]] const PrivateBus &bus() const { return m_bus; }
    [[nodiscard]] bool runs() const;
    /// As if it had crashed.
    void end() const;

    /// How many notifications there are on the display; negative while it does not run.
    [[nodiscard]] int displayed() const;
    /// Does what a click on the latest one does.
    void click() const;
    /// Takes all from the display. What was shown since the server's start, the first one first, each as its
    /// title and its body in markup: "Quota Alert: You've used 84%".
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
