// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

namespace burnwick {

/// The state of the link to the account.
enum class OAuthStatus {
    unknown,        ///< not determined yet
    connected,      ///< the last quota fetch succeeded
    disconnected,   ///< there are no credentials
    expired,        ///< there are credentials, but they are of no use
    authenticating, ///< a login is running
};

} // namespace burnwick
