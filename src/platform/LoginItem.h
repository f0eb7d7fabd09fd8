// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace burnwick {

/// Why the login item could not be changed: text for a log, without a line feed at its end.
struct LoginItemFailure {
    std::string reason;
};

/// Whether the desktop starts this program when the user logs in. Only the system's record counts: the user
/// may change it elsewhere. A failure changes nothing. Main thread only.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    [[nodiscard]] virtual bool isRegistered() const = 0;
    /// Makes the desktop start the program at login, at the user's demand, also where the user had switched
    /// it off elsewhere. A record by which the desktop starts it already stays unchanged.
    [[nodiscard]] virtual std::optional<LoginItemFailure> registerItem() = 0;
    /// Keeps the desktop from starting the program at login, at the user's demand; succeeds when it did not,
    /// and fails when the record cannot be read. A record that the user made or changed is switched off, not
    /// removed.
    [[nodiscard]] virtual std::optional<LoginItemFailure> unregisterItem() = 0;
    /// Registers or unregisters by an earlier choice. A record that the user made, changed or switched off
    /// stays unchanged, which is no failure.
    [[nodiscard]] virtual std::optional<LoginItemFailure> restoreChoice(bool on) = 0;
};

} // namespace burnwick
