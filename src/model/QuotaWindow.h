// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <cstdint>
#include <ratio>

namespace burnwick {

/// Identifies a 5-hour window by its reset instant. The service computes that instant anew for each answer,
/// and it wobbles by up to two seconds around a whole minute; the next window lies hours ahead.
class QuotaWindow {
public:
    explicit QuotaWindow(Instant resetAt) noexcept
        : m_rounded(std::chrono::round<Grid>(resetAt)) {}

    /// The reset instant to the nearest ten seconds.
    [[nodiscard]] Instant roundedResetAt() const noexcept { return m_rounded; }

    /// Equal for answers about the same window.
    bool operator==(const QuotaWindow &) const noexcept = default;

private:
    using Grid = std::chrono::duration<std::int64_t, std::ratio<10>>;
    Instant m_rounded;
};

} // namespace burnwick
