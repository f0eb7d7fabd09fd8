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

enum class LoginItemState {
    off,
    on,
    requiresApproval, ///< registered; the user has to allow it in the system's settings first
};

/// The system's record that the desktop starts this program when the user logs in. The user may change it
/// elsewhere, so it is read anew by each call. A failure changes nothing. Main thread only.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    [[nodiscard]] virtual LoginItemState state() const = 0;
    /// Makes the desktop start the program at login, as the user demands now: also when the user had disabled
    /// the record elsewhere. A record by which the desktop starts it already stays unchanged.
    [[nodiscard]] virtual std::optional<LoginItemFailure> registerItem() = 0;
    /// Keeps the desktop from starting the program at login, as the user demands now. Succeeds when the
    /// desktop does not start it, and fails when the record cannot be read. A record that the user made or
    /// changed is disabled, not removed.
    [[nodiscard]] virtual std::optional<LoginItemFailure> unregisterItem() = 0;
    /// Registers or unregisters by an earlier choice. A record that the user made, changed or disabled stays
    /// unchanged, which is not a failure.
    [[nodiscard]] virtual std::optional<LoginItemFailure> restoreChoice(bool on) = 0;
};

} // namespace burnwick
