// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <optional>
#include <string>

namespace burnwick {

/// The token endpoint's response to a refresh token.
struct RefreshedTokens {
    std::string accessToken;
    std::optional<std::string> refreshToken; ///< null when the old one stays valid
    std::optional<Instant> expiresAt;        ///< the access token's expiry

    bool operator==(const RefreshedTokens &) const = default;
};

} // namespace burnwick
