// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <optional>
#include <string>

namespace burnwick {

/// The login that Claude Code keeps. Held only as long as a request needs it, never logged.
struct OAuthCredentials {
    std::string accessToken; ///< never empty
    std::optional<std::string> refreshToken;
    std::optional<Instant> expiresAt;

    bool operator==(const OAuthCredentials &) const = default;
};

/// Whether the access token has expired or will within five minutes: too soon to start a request with it. One
/// of unknown expiry has not.
[[nodiscard]] inline bool isExpired(const OAuthCredentials &credentials, Instant now) {
    constexpr std::chrono::seconds margin(300);
    return credentials.expiresAt && now + margin >= *credentials.expiresAt;
}

} // namespace burnwick
