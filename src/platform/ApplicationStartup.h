// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace burnwick {

/// The desktop's permission to raise a window, and its identifier of the click; empty when the desktop sets
/// none. Each can be used once.
struct StartupActivation {
    std::string token;     ///< Wayland's
    std::string startupId; ///< X11's; Qt uses it itself in the started process

    bool operator==(const StartupActivation &) const = default;
};

/// What a system needs before and after the construction of the application object of a program with windows.
/// Make it before that object and destroy it after it. Main thread only.
class ApplicationStartup {
public:
    virtual ~ApplicationStartup() = default;

    /// Prepares the process. Returns why it can show no windows, in one sentence; null when it can. Call it
    /// once, before the application object exists and before the process uses any of the system's services.
    [[nodiscard]] virtual std::optional<std::string> prepare() = 0;
    /// Returns what the desktop passed to this process at its start. Call it once, when the application
    /// object exists.
    [[nodiscard]] virtual StartupActivation begin() = 0;
    /// Announces that this process shows no window after all. Needs a running application object.
    virtual void endWithoutWindow() = 0;
};

} // namespace burnwick
