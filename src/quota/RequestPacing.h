// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <chrono>
#include <optional>

namespace burnwick {

/// Decides when the usage endpoint may be asked. It refuses requests that follow each other too closely.
///
/// After a refusal, the next automatic request waits for 10 minutes, twice as long after each further one up
/// to an hour, and at least as long as the service asks for, up to a day. A random part of up to 10 % is
/// added. The user's requests wait for 30 s. While the status line reports the limits, automatic requests are
/// 30 minutes apart. Clocks may jump: an event in the future is ignored.
class RequestPacing final {
public:
    enum class Asker { timer, user };

    /// Returns the instant of the earliest request: `now` if it may be sent at once.
    [[nodiscard]] Instant earliest(Asker asker, Instant now) const;

    void noteRequest(Instant now) { m_askedAt = now; }
    /// `jitter` is from 0 to 1.
    void noteRefusal(Instant now, std::optional<std::chrono::seconds> retryAfter, double jitter);
    /// Call after an answer with the limits and after a new login: refusals concern an access token.
    void forgetRefusals();
    /// Call after the status line reported the session's limit.
    void noteObservation(Instant at) { m_observedAt = at; }

private:
    std::optional<Instant> m_askedAt;
    std::optional<Instant> m_observedAt;
    std::optional<Instant> m_refusedAt;   ///< null after an answer
    std::chrono::milliseconds m_pause{0}; ///< for the timer, since m_refusedAt
    std::chrono::minutes m_nextMinimum{10};
};

} // namespace burnwick
