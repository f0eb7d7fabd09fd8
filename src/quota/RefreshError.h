// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <stdexcept>

namespace burnwick {

/// Why the token endpoint gave no new tokens.
class RefreshError final : public std::runtime_error {
public:
    enum class Kind {
        serverError, ///< the status is in httpStatus()
        tokenExpired,
        networkError, ///< the answer was not HTTP
        invalidResponse,
    };

    /// For every kind but serverError.
    explicit RefreshError(Kind kind);
    [[nodiscard]] static RefreshError server(std::int64_t status);

    [[nodiscard]] Kind kind() const noexcept { return m_kind; }
    /// 0 unless the kind is serverError.
    [[nodiscard]] std::int64_t httpStatus() const noexcept { return m_httpStatus; }

private:
    RefreshError(Kind kind, std::int64_t httpStatus);

    Kind m_kind;
    std::int64_t m_httpStatus;
};

} // namespace burnwick
