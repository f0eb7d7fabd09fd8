// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/OAuthCredentials.h"

#include <optional>
#include <string>
#include <string_view>

namespace burnwick {

/// The login in the JSON document that Claude Code stores: of the object "claudeAiOauth" the strings
/// "accessToken" and "refreshToken" and the instant "expiresAt". Of equal keys the last counts, as it does
/// for Claude Code. Absent when the document is malformed or has no access token.
///
/// "expiresAt" is a number of milliseconds since 1970, with or without a fraction (kept to the nanosecond),
/// or an internet date-time in whole seconds. Anything else is an unknown expiry.
[[nodiscard]] std::optional<OAuthCredentials> credentialsFromDocument(std::string_view document);

/// The document with an access token and, where given, a refresh token and an expiry put in; the expiry as a
/// number that reads back to the same instant. Everything else stays as it is, to the byte. Absent when the
/// document is malformed or has no object "claudeAiOauth", or a token is not valid UTF-8.
[[nodiscard]] std::optional<std::string> patchedDocument(std::string_view document,
                                                         std::string_view accessToken,
                                                         const std::optional<std::string> &refreshToken,
                                                         const std::optional<Instant> &expiresAt);

} // namespace burnwick
