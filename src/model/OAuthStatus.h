// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

namespace burnwick {

/// The state of the link to the account.
enum class OAuthStatus {
    unknown,        ///< not determined yet
    connected,      ///< the last quota fetch succeeded
    disconnected,   ///< there are no credentials
    expired,        ///< there are credentials, but the service does not accept them
    authenticating, ///< a login is running
};

/// Returns the name of the case, such as "connected".
[[nodiscard]] constexpr std::string_view nameOf(OAuthStatus status) noexcept {
    constexpr std::string_view names[] = {"unknown", "connected", "disconnected", "expired",
                                          "authenticating"};
    return names[static_cast<std::size_t>(status)];
}

} // namespace burnwick
