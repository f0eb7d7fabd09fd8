// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/FetchError.h"

namespace burnwick {

std::string descriptionOf(RefreshFailure failure, std::int64_t httpStatus) {
    switch (failure) {
    case RefreshFailure::serverError:
        return "Token endpoint server error (HTTP " + std::to_string(httpStatus) + ")";
    case RefreshFailure::tokenExpired:
        return "OAuth refresh token expired — re-authentication required";
    case RefreshFailure::networkError:
        return "Network error during token refresh";
    case RefreshFailure::invalidResponse:
        break;
    }
    return "Unexpected response from token endpoint";
}

std::string descriptionOf(FetchFailure failure, std::int64_t httpStatus) {
    switch (failure) {
    case FetchFailure::httpError:
        return "Server error (HTTP " + std::to_string(httpStatus) + ")";
    case FetchFailure::noToken:
        return "OAuth token not found in Keychain";
    case FetchFailure::noRefreshToken:
        return "No refresh token available";
    case FetchFailure::refreshFailed:
        return "Token refresh failed";
    case FetchFailure::refreshTokenExpired:
        return "Re-authentication required";
    case FetchFailure::refreshTemporaryFailure:
        return "Temporary failure — will retry";
    case FetchFailure::unauthorized:
        return "OAuth token is invalid";
    case FetchFailure::invalidResponse:
        break;
    }
    return "Invalid server response";
}

FetchError FetchError::refreshUnanswered() {
    FetchError error(FetchFailure::refreshFailed);
    error.m_isUnanswered = true;
    return error;
}

FetchError FetchError::tooManyRequests(std::optional<std::chrono::seconds> retryAfter) {
    FetchError error(FetchFailure::httpError, 429);
    error.m_retryAfter = retryAfter;
    return error;
}

} // namespace burnwick
