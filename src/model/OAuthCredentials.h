// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <optional>
#include <string>

namespace burnwick {

/// The login that Claude Code stores. Never logged, and destroyed after each request.
struct OAuthCredentials {
    std::string accessToken; ///< never empty
    std::optional<std::string> refreshToken;
    std::optional<Instant> expiresAt;

    bool operator==(const OAuthCredentials &) const = default;
};

/// Whether the access token has expired or expires within five minutes. False for an unknown expiry.
[[nodiscard]] inline bool isExpired(const OAuthCredentials &credentials, Instant now) {
    constexpr std::chrono::seconds margin(300);
    return credentials.expiresAt && now + margin >= *credentials.expiresAt;
}

} // namespace burnwick
