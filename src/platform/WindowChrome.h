// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>

namespace burnwick {

/// Decorates windows where applications, not the window manager, decide on the look of title bars. Windows
/// are named by QWidget::winId(); decorate each once, when it is shown. Calls no handler after this object is
/// destroyed. Main thread only.
class WindowChrome {
public:
    /// Called from the event loop with the height of the title bar that covers the top of the window's
    /// contents, in logical pixels.
    using HeightHandler = std::function<void(int titleBarHeight)>;

    virtual ~WindowChrome() = default;

    /// Gives the dashboard's window a toolbar with a settings button, which calls `openSettings` from the
    /// event loop.
    virtual void decorateDashboard(std::uintptr_t window, std::function<void()> openSettings,
                                   HeightHandler onHeight) = 0;
    virtual void decorateSettings(std::uintptr_t window, HeightHandler onHeight) = 0;
};

} // namespace burnwick
