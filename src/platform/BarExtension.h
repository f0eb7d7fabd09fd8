// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>

namespace burnwick {

/// The installed extension by which the desktop's own bar shows the title. Main thread only.
class BarExtension {
public:
    enum class State : std::uint8_t {
        settled,     ///< the title is seen in some way, or the desktop has not answered yet
        offered,     ///< nothing shows the title; enable() does
        atNextLogin, ///< it is enabled, but the desktop cannot load it before
    };

    virtual ~BarExtension() = default;
    [[nodiscard]] virtual State state() const = 0;
    /// Called after each change of the state.
    virtual void setChangeHandler(std::function<void()> handler) = 0;
    /// Enables it for this user, now and in later sessions.
    virtual void enable() = 0;
};

} // namespace burnwick
