// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QPoint>
#include <QtCore/QProcess>
#include <QtCore/QString>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <xcb/xcb.h>

namespace burnwick::test {

/// An X server of the test's own, without a window manager and so without frames around windows. Ends with
/// this object, and with the process at the latest.
class VirtualDisplay {
public:
    VirtualDisplay();
    ~VirtualDisplay();
    VirtualDisplay(const VirtualDisplay &) = delete;
    VirtualDisplay &operator=(const VirtualDisplay &) = delete;

    /// For the variable DISPLAY; empty when the server did not start.
    [[nodiscard]] QString name() const { return m_name; }

    /// Whether a window of that title can be seen.
    [[nodiscard]] bool shows(const QByteArray &title) const;
    /// Whether it is the topmost one that can be seen.
    [[nodiscard]] bool showsInFront(const QByteArray &title) const;
    /// Whether the keyboard is its.
    [[nodiscard]] bool givesKeyboardTo(const QByteArray &title) const;
    /// Asks the window to close, as its frame's button would.
    void close(const QByteArray &title);
    /// Presses and releases a key, of X11/keysym.h, with modifiers in the window of that title.
    void pressKey(const QByteArray &title, xcb_keysym_t key, std::uint16_t modifiers = 0);
    /// Where the window of that title has that colour, 0xRRGGBB, first; from the display's corner.
    [[nodiscard]] std::optional<QPoint> find(const QByteArray &title, std::uint32_t color) const;
    /// Moves the pointer there and presses its left button; false when that could not be done.
    [[nodiscard]] bool click(const QPoint &place) const;
    /// Puts a window over all others.
    void cover();
    /// What programs told all the desktop about their starts, from the first call on, in one text.
    [[nodiscard]] QByteArray saidOfStarts();

private:
    struct Disconnect {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };

    [[nodiscard]] xcb_window_t root() const;
    [[nodiscard]] xcb_atom_t atom(const QByteArray &name) const;
    /// Those that can be seen, the topmost one last.
    [[nodiscard]] std::vector<xcb_window_t> visibleWindows() const;
    [[nodiscard]] QByteArray titleOf(xcb_window_t window) const;
    [[nodiscard]] xcb_keycode_t codeOf(xcb_keysym_t key) const;

    QProcess m_server;
    QString m_name;
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    QByteArray m_saidOfStarts;
};

} // namespace burnwick::test
