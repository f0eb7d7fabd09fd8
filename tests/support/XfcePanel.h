// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/LogTreeFixture.h"
#include "support/PrivateBus.h"
#include "support/VirtualDisplay.h"

namespace burnwick::test {

/// Xfce's panel with only its status area, at the lower edge of a virtual display.
class XfcePanel {
public:
    XfcePanel();
    ~XfcePanel();
    XfcePanel(const XfcePanel &) = delete;
    XfcePanel &operator=(const XfcePanel &) = delete;

    /// Returns the session bus of its items.
    [[nodiscard]] const PrivateBus &bus() const { return m_bus; }
    /// Returns the display, on which the panel's window is "xfce4-panel".
    [[nodiscard]] VirtualDisplay &display() { return m_display; }

    void start();
    void end();

private:
    VirtualDisplay m_display;
    TemporaryDirectory m_directory;
    PrivateBus m_bus;
    QProcess m_panel;
};

} // namespace burnwick::test
