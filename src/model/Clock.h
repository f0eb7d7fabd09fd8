// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

namespace burnwick {

/// Returns the current time. Injected, so that tests can set it. Thread-safe.
class Clock {
public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual Instant now() const = 0;
};

/// The machine's clock.
class SystemClock final : public Clock {
public:
    [[nodiscard]] Instant now() const override { return std::chrono::system_clock::now(); }
};

} // namespace burnwick
