// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

namespace burnwick {

/// Why a refresh token gave no new tokens.
enum class RefreshFailure {
    serverError, ///< with the HTTP status
    tokenExpired,
    networkError, ///< the response is not HTTP
    invalidResponse,
};

/// Why the account's quota is not available.
enum class FetchFailure {
    httpError, ///< with the HTTP status
    noToken,
    noRefreshToken,
    refreshFailed,
    refreshTokenExpired,
    refreshTemporaryFailure,
    unauthorized,
    invalidResponse,
};

/// Returns the text for the user.
[[nodiscard]] std::string descriptionOf(RefreshFailure failure, std::int64_t httpStatus);
[[nodiscard]] std::string descriptionOf(FetchFailure failure, std::int64_t httpStatus);

/// A failure of an account endpoint, with its description as the exception's text.
template <typename Failure>
class AccountError : public std::runtime_error {
public:
    using Kind = Failure;

    explicit AccountError(Kind kind, std::int64_t httpStatus = 0)
        : std::runtime_error(descriptionOf(kind, httpStatus))
        , m_kind(kind)
        , m_httpStatus(httpStatus) {}

    [[nodiscard]] Kind kind() const noexcept { return m_kind; }
    /// 0 unless the kind comes with an HTTP status.
    [[nodiscard]] std::int64_t httpStatus() const noexcept { return m_httpStatus; }

private:
    Kind m_kind;
    std::int64_t m_httpStatus;
};

using RefreshError = AccountError<RefreshFailure>;

class FetchError final : public AccountError<FetchFailure> {
public:
    using AccountError::AccountError;
    /// Returns a refreshFailed error with isUnanswered().
    [[nodiscard]] static FetchError refreshUnanswered();
    /// Returns an httpError with status 429.
    [[nodiscard]] static FetchError tooManyRequests(std::optional<std::chrono::seconds> retryAfter);

    /// Whether the token endpoint did not respond.
    [[nodiscard]] bool isUnanswered() const noexcept { return m_isUnanswered; }
    /// Whether the usage endpoint answered 429.
    [[nodiscard]] bool isTooManyRequests() const noexcept {
        return kind() == Kind::httpError && httpStatus() == 429;
    }
    /// The wait that the answer asked for; null if it did not.
    [[nodiscard]] std::optional<std::chrono::seconds> retryAfter() const noexcept { return m_retryAfter; }

private:
    bool m_isUnanswered = false;
    std::optional<std::chrono::seconds> m_retryAfter;
};

} // namespace burnwick
