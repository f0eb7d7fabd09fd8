// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/LoginItem.h"

namespace burnwick {

/// The status of the program's login item in the system.
enum class LoginItemService {
    notRegistered,
    enabled,
    requiresApproval, ///< the user switched it off, or has not allowed it yet
    notFound,         ///< never registered
};

enum class LoginItemStep { keep, registerItem, unregisterItem };

[[nodiscard]] LoginItemState stateOf(LoginItemService service) noexcept;

/// Returns what applies an earlier choice, and leaves what the user chose in the system's settings.
[[nodiscard]] LoginItemStep stepToRestore(bool on, LoginItemService service) noexcept;

/// Returns whether a step has succeeded, by the status after it: the system returns errors also for a step
/// that was done before, or that waits for the user's approval.
[[nodiscard]] bool hasSucceeded(LoginItemStep step, LoginItemService after) noexcept;

} // namespace burnwick
