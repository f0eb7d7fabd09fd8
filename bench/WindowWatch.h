// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <xcb/xcb.h>

class QSocketNotifier;
class QString;

namespace burnwick::bench {

/// Tells when a program's window is painted for the first time, as the X server sees it. Needs an event loop.
class WindowWatch {
public:
    /// `painted` is called once, for the first window that is mapped and gets pixels that are not black.
    WindowWatch(const QString &display, std::function<void()> painted);
    ~WindowWatch();
    WindowWatch(const WindowWatch &) = delete;
    WindowWatch &operator=(const WindowWatch &) = delete;

private:
    struct Disconnect {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };

    void takeEvents();
    void watch(xcb_window_t window);
    [[nodiscard]] bool isPainted(xcb_window_t window) const;

    std::function<void()> m_painted;
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    std::uint8_t m_damageEvent = 0;
    std::unique_ptr<QSocketNotifier> m_readable;
};

} // namespace burnwick::bench
