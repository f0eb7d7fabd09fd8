// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/LoginItem.h"

#include <optional>
#include <string>

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

/// Returns the failure of a step; null when it succeeded, and when the code says that it was already done or
/// waits for the user's approval. `code` is that of an error of ServiceManagement; null for other errors.
[[nodiscard]] std::optional<LoginItemFailure> failureOf(LoginItemStep step, bool succeeded,
                                                        std::optional<long> code, const std::string &reason);

} // namespace burnwick
