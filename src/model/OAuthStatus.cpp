// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/OAuthStatus.h"

namespace burnwick {

std::string_view nameOf(OAuthStatus status) noexcept {
    switch (status) {
    case OAuthStatus::connected:
        return "connected";
    case OAuthStatus::disconnected:
        return "disconnected";
    case OAuthStatus::expired:
        return "expired";
    case OAuthStatus::authenticating:
        return "authenticating";
    case OAuthStatus::unknown:
        break;
    }
    return "unknown";
}

} // namespace burnwick
