// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QPoint>
#include <QtCore/QProcess>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <xcb/xcb.h>

namespace burnwick::test {

/// An X server without a window manager, and so without frames around windows. Ends with this object, and
/// with the process at the latest. Windows are named by their titles.
class VirtualDisplay {
public:
    VirtualDisplay();
    ~VirtualDisplay();
    VirtualDisplay(const VirtualDisplay &) = delete;
    VirtualDisplay &operator=(const VirtualDisplay &) = delete;

    /// Returns the value of DISPLAY; empty if the server did not start.
    [[nodiscard]] QString name() const { return m_name; }

    /// Whether the window is mapped.
    [[nodiscard]] bool shows(const QByteArray &title) const;
    /// Whether the window is the topmost mapped one.
    [[nodiscard]] bool showsInFront(const QByteArray &title) const;
    /// Whether the window has the keyboard focus.
    [[nodiscard]] bool givesKeyboardTo(const QByteArray &title) const;
    /// Asks the window to close, as its frame's button would.
    void close(const QByteArray &title);
    /// Returns the first pixel of the window in that colour, 0xRRGGBB; from the display's corner.
    [[nodiscard]] std::optional<QPoint> find(const QByteArray &title, std::uint32_t color) const;
    /// Clicks with the left button at that place; returns false on failure.
    [[nodiscard]] bool click(const QPoint &place) const;
    /// Types keys with modifiers, such as "Tab ctrl+q", into the focused window; returns false on failure.
    [[nodiscard]] bool pressKeys(const QString &keys) const;
    /// Maps a window above all others.
    void cover();
    /// Returns the text of all startup notifications to the desktop since the first call.
    [[nodiscard]] QByteArray startupMessages();

private:
    struct Disconnect {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };

    [[nodiscard]] xcb_window_t root() const;
    [[nodiscard]] xcb_atom_t atom(const QByteArray &name) const;
    /// Returns the mapped windows, the topmost one last.
    [[nodiscard]] std::vector<xcb_window_t> visibleWindows() const;
    [[nodiscard]] QByteArray titleOf(xcb_window_t window) const;
    bool runXdotool(const QStringList &arguments) const;

    QProcess m_server;
    QString m_name;
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    QByteArray m_startupMessages;
};

} // namespace burnwick::test
