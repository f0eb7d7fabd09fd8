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

/// Whether the desktop starts this program when the user logs in. The system's own record is the truth: the
/// user may change it elsewhere. After a failure all is as it was before. Main thread only.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    [[nodiscard]] virtual bool isRegistered() const = 0;
    /// Makes the desktop start the program at login, as the user demands now, also where the user had
    /// switched it off elsewhere. A record by which the desktop starts it already stays as the user made it.
    [[nodiscard]] virtual std::optional<LoginItemFailure> registerItem() = 0;
    /// Keeps the desktop from starting the program at login, as the user demands now; succeeds when it did
    /// not, and fails when the record cannot be read. A record that the user made or changed is switched off
    /// and stays.
    [[nodiscard]] virtual std::optional<LoginItemFailure> unregisterItem() = 0;
    /// Registers or unregisters by a choice of earlier. A record that the user made, changed or switched off
    /// stays as it is, which is no failure.
    [[nodiscard]] virtual std::optional<LoginItemFailure> restoreChoice(bool on) = 0;
};

} // namespace burnwick
