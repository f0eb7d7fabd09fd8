// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/OAuthCredentials.h"

#include <optional>
#include <string>
#include <string_view>

namespace burnwick {

/// Reads the login from the JSON document that Claude Code stores: the strings "accessToken" and
/// "refreshToken" and the instant "expiresAt" of the object "claudeAiOauth". The last of equal keys counts,
/// as it does for Claude Code. Null when the document is malformed or has no access token.
///
/// "expiresAt" is a number of milliseconds since 1970, with or without a fraction, or an internet
/// date-time in whole seconds. Anything else is an unknown expiry.
[[nodiscard]] std::optional<OAuthCredentials> credentialsFromDocument(std::string_view document);

/// Returns the document with these values in place of the old ones; a null value keeps the old one. The
/// expiry becomes milliseconds since 1970, to the precision of a double. No other byte changes. Null when the
/// document is malformed or has no object "claudeAiOauth", or when a token is not valid UTF-8.
[[nodiscard]] std::optional<std::string> patchedDocument(std::string_view document,
                                                         std::string_view accessToken,
                                                         const std::optional<std::string> &refreshToken,
                                                         const std::optional<Instant> &expiresAt);

} // namespace burnwick
