// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace burnwick {

/// The desktop's preferences for every program.
struct AppearanceWishes {
    enum class Colors { noPreference, dark, light };

    Colors colors = Colors::noPreference;
    bool reducedMotion = false;

    bool operator==(const AppearanceWishes &) const = default;
};

/// Follows the desktop's appearance. Main thread only.
class DesktopAppearance {
public:
    using Handler = std::function<void(const AppearanceWishes &wishes)>;

    virtual ~DesktopAppearance() = default;

    /// Calls the handler once the desktop has returned its colours, or an error, and then with each change.
    /// The first call has no time limit. On the main thread, after this call returned; not after this object
    /// is destroyed. Call follow() at most once.
    virtual void follow(Handler handler) = 0;
    /// Shows what the system draws for the program, such as title bars, in these colours; noPreference
    /// follows the desktop again. While colours are imposed, the handler may be called with them. Without
    /// effect where the window manager decides.
    virtual void impose(AppearanceWishes::Colors colors) = 0;
};

} // namespace burnwick
