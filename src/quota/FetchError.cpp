// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/FetchError.h"

#include <string>

namespace burnwick {

namespace {

std::string descriptionOf(FetchError::Kind kind, std::int64_t httpStatus) {
    switch (kind) {
    case FetchError::Kind::httpError:
        return "Server error (HTTP " + std::to_string(httpStatus) + ")";
    case FetchError::Kind::noToken:
        return "OAuth token not found in Keychain";
    case FetchError::Kind::noRefreshToken:
        return "No refresh token available";
    case FetchError::Kind::refreshFailed:
        return "Token refresh failed";
    case FetchError::Kind::refreshTokenExpired:
        return "Re-authentication required";
    case FetchError::Kind::refreshTemporaryFailure:
        return "Temporary failure — will retry";
    case FetchError::Kind::unauthorized:
        return "OAuth token is invalid";
    case FetchError::Kind::invalidResponse:
        return "Invalid server response";
    }
    return {};
}

} // namespace

FetchError::FetchError(Kind kind)
    : FetchError(kind, 0) {}

FetchError::FetchError(Kind kind, std::int64_t httpStatus)
    : std::runtime_error(descriptionOf(kind, httpStatus))
    , m_kind(kind)
    , m_httpStatus(httpStatus) {}

FetchError FetchError::http(std::int64_t status) {
    return {Kind::httpError, status};
}

FetchError FetchError::refreshUnanswered() {
    FetchError error(Kind::refreshFailed);
    error.m_isUnanswered = true;
    return error;
}

} // namespace burnwick
