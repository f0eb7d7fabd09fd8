// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace burnwick {

/// What the desktop's user wishes for every program.
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

    /// Calls the handler once the desktop has told its colours, or turns out to tell none, and then with each
    /// change; until then the default wishes hold. On the main thread, after this call returned; no longer
    /// than this object lives. A desktop that does not answer may take its time. At most once.
    virtual void follow(Handler handler) = 0;
};

} // namespace burnwick
