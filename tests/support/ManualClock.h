// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Clock.h"
#include "model/Timestamp.h"

#include <atomic>

namespace burnwick::test {

/// Returns the instant of a date-time such as "2025-06-01T12:00:00Z"; throws for malformed text.
inline Instant at(std::string_view text) {
    return parseTimestamp(text).value();
}

/// A clock whose time changes only by set() and advance(). Thread-safe.
class ManualClock final : public Clock {
public:
    explicit ManualClock(std::string_view start)
        : m_now(at(start)) {}
    [[nodiscard]] Instant now() const override { return m_now; }
    void set(Instant instant) { m_now = instant; }
    void advance(std::chrono::nanoseconds by) { m_now = m_now.load() + by; }

private:
    std::atomic<Instant> m_now;
};

} // namespace burnwick::test
