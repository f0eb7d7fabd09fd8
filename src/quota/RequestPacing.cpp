// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/RequestPacing.h"

#include <algorithm>

namespace burnwick {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::minutes shortestPause = 10min;
constexpr std::chrono::minutes longestMinimum = 1h;
/// Whatever the service asks for.
constexpr std::chrono::hours longestPause = 24h;
constexpr std::chrono::seconds usersPause = 30s;
constexpr double jitterShare = 0.1;
constexpr std::chrono::minutes freshObservation = 5min;
constexpr std::chrono::minutes intervalBesideStatusLine = 30min;

/// Returns the end of the wait, or `now` if it is over or began in the future.
Instant endOf(std::optional<Instant> begin, std::chrono::milliseconds length, Instant now) {
    return begin && *begin <= now ? std::max(now, *begin + length) : now;
}

} // namespace

Instant RequestPacing::earliest(Asker asker, Instant now) const {
    if (asker == Asker::user)
        return endOf(m_refusedAt, usersPause, now);
    const Instant besideStatusLine =
        std::min(endOf(m_observedAt, freshObservation, now), endOf(m_askedAt, intervalBesideStatusLine, now));
    return std::max(endOf(m_refusedAt, m_pause, now), besideStatusLine);
}

void RequestPacing::noteRefusal(Instant now, std::optional<std::chrono::seconds> retryAfter, double jitter) {
    const std::chrono::seconds pause =
        std::clamp<std::chrono::seconds>(retryAfter.value_or(0s), m_nextMinimum, longestPause);
    m_refusedAt = now;
    m_pause = pause + std::chrono::round<std::chrono::milliseconds>(pause * (jitterShare * jitter));
    m_nextMinimum = std::min(2 * m_nextMinimum, longestMinimum);
}

void RequestPacing::forgetRefusals() {
    m_refusedAt.reset();
    m_nextMinimum = shortestPause;
}

} // namespace burnwick
