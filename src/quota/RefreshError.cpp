// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/RefreshError.h"

#include <string>

namespace burnwick {

namespace {

std::string descriptionOf(RefreshError::Kind kind, std::int64_t httpStatus) {
    switch (kind) {
    case RefreshError::Kind::serverError:
        return "Token endpoint server error (HTTP " + std::to_string(httpStatus) + ")";
    case RefreshError::Kind::tokenExpired:
        return "OAuth refresh token expired — re-authentication required";
    case RefreshError::Kind::networkError:
        return "Network error during token refresh";
    case RefreshError::Kind::invalidResponse:
        return "Unexpected response from token endpoint";
    }
    return {};
}

} // namespace

RefreshError::RefreshError(Kind kind)
    : RefreshError(kind, 0) {}

RefreshError::RefreshError(Kind kind, std::int64_t httpStatus)
    : std::runtime_error(descriptionOf(kind, httpStatus))
    , m_kind(kind)
    , m_httpStatus(httpStatus) {}

RefreshError RefreshError::server(std::int64_t status) {
    return {Kind::serverError, status};
}

} // namespace burnwick
