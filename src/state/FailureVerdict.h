// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/OAuthStatus.h"
#include "quota/FetchError.h"

#include <optional>

namespace burnwick {

/// Who asked for the quota: the timer, or the user.
enum class RefreshKind { automatic, forced };

/// What a failed quota fetch says about the link to the account.
enum class FailureVerdict {
    disconnected,
    expired,
    /// Expired with credentials, disconnected without. An automatic refresh looks only while nothing is known
    /// yet: a passing failure leaves a connected account connected.
    dependsOnCredentials,
};

/// `error` is absent for failures that are no FetchError, such as those of the network.
[[nodiscard]] constexpr FailureVerdict verdictOn(std::optional<FetchError::Kind> error,
                                                 RefreshKind refresh) noexcept {
    using Kind = FetchError::Kind;
    if (!error)
        return FailureVerdict::dependsOnCredentials;
    switch (*error) {
    case Kind::noToken:
        return FailureVerdict::disconnected;
    case Kind::noRefreshToken:
    case Kind::refreshFailed:
    case Kind::unauthorized:
        return FailureVerdict::expired;
    case Kind::refreshTokenExpired:
        return refresh == RefreshKind::automatic ? FailureVerdict::expired
                                                 : FailureVerdict::dependsOnCredentials;
    case Kind::refreshTemporaryFailure:
    case Kind::invalidResponse:
    case Kind::httpError:
        break;
    }
    return FailureVerdict::dependsOnCredentials;
}

/// The state of the link after such a failure. Whether there are credentials counts only where the verdict
/// depends on them.
[[nodiscard]] constexpr OAuthStatus statusAfter(FailureVerdict verdict, bool hasCredentials) noexcept {
    const bool expired = verdict == FailureVerdict::expired ||
                         (verdict == FailureVerdict::dependsOnCredentials && hasCredentials);
    return expired ? OAuthStatus::expired : OAuthStatus::disconnected;
}

} // namespace burnwick
