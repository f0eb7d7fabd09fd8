// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <stdexcept>

namespace burnwick {

/// Why the account's quota could not be had. Its text is for the user.
class FetchError final : public std::runtime_error {
public:
    enum class Kind {
        httpError, ///< the status is in httpStatus()
        noToken,
        noRefreshToken,
        refreshFailed,
        refreshTokenExpired,
        refreshTemporaryFailure,
        unauthorized,
        invalidResponse,
    };

    /// For every kind but httpError.
    explicit FetchError(Kind kind);
    [[nodiscard]] static FetchError http(std::int64_t status);
    /// The renewal failed because its server did not answer.
    [[nodiscard]] static FetchError refreshUnanswered();

    [[nodiscard]] Kind kind() const noexcept { return m_kind; }
    /// 0 unless the kind is httpError.
    [[nodiscard]] std::int64_t httpStatus() const noexcept { return m_httpStatus; }
    /// Whether the cause is the network: no server has answered.
    [[nodiscard]] bool isUnanswered() const noexcept { return m_isUnanswered; }

private:
    FetchError(Kind kind, std::int64_t httpStatus);

    Kind m_kind;
    std::int64_t m_httpStatus;
    bool m_isUnanswered = false;
};

} // namespace burnwick
