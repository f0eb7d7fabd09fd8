// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace burnwick {

/// The state of the link to the account.
enum class OAuthStatus {
    unknown,        ///< not determined yet
    connected,      ///< the last quota fetch succeeded
    disconnected,   ///< there are no credentials
    expired,        ///< there are credentials, but they are of no use
    authenticating, ///< a login is running
};

/// The case's name: "unknown", "connected" and so on.
[[nodiscard]] std::string_view nameOf(OAuthStatus status) noexcept;

} // namespace burnwick
