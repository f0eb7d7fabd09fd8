// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/LogTreeFixture.h"
#include "support/PrivateBus.h"
#include "support/VirtualDisplay.h"

namespace burnwick::test {

/// Xfce's panel with nothing but its status area on it, at the lower edge of a display of its own.
class XfcePanel {
public:
    XfcePanel();
    ~XfcePanel();
    XfcePanel(const XfcePanel &) = delete;
    XfcePanel &operator=(const XfcePanel &) = delete;

    /// The session bus on which it looks for items.
    [[nodiscard]] const PrivateBus &bus() const { return m_bus; }
    [[nodiscard]] VirtualDisplay &display() { return m_display; }

    void start();
    void end();
    /// The status items that have registered with it, by bus name and path; not older kinds of tray icons.
    [[nodiscard]] QStringList items() const;
    /// Where the panel has that colour, 0xRRGGBB, first; from the display's corner.
    [[nodiscard]] std::optional<QPoint> find(std::uint32_t color) const;

private:
    VirtualDisplay m_display;
    TemporaryDirectory m_directory;
    PrivateBus m_bus;
    QDBusConnection m_observer;
    QProcess m_panel;
};

} // namespace burnwick::test
