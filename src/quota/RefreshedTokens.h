// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <QByteArray>

#include <optional>
#include <string>

namespace burnwick {

/// What the token endpoint gives for a refresh token.
struct RefreshedTokens {
    std::string accessToken;
    std::optional<std::string> refreshToken; ///< none when the old one stays valid
    std::optional<Instant> expiresAt;        ///< the access token's expiry

    bool operator==(const RefreshedTokens &) const = default;
};

/// Reads the body of an answer that is handled `now`; a lifetime beyond the range of Instant ends at its
/// limit. Throws DecodeError for what is not JSON, and RefreshError::invalidResponse for other JSON.
[[nodiscard]] RefreshedTokens decodeRefreshedTokens(const QByteArray &body, Instant now);

} // namespace burnwick
