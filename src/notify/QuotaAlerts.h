// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <optional>

namespace burnwick {

/// Told of what may be worth an alert; decides whether the user hears of it. Main thread only.
class QuotaAlerts {
public:
    virtual ~QuotaAlerts() = default;
    /// The 5-hour window stands at `usagePct` percent; the two flags are the user's preferences.
    virtual void checkQuota(std::optional<Instant> resetAt, bool alertAt80Enabled, bool rateLimitEnabled,
                            double usagePct) = 0;
    /// A new 5-hour window has begun.
    virtual void sendSessionReset() = 0;
};

} // namespace burnwick
