// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Limit.h"
#include "model/QuotaData.h"

#include <vector>

namespace burnwick {

/// Returns the first of each limit, at most 20 scoped ones, in order: session, weekly, Claude Design, other
/// scoped ones. Omits limits whose percentage is not finite; a negative one becomes 0.
[[nodiscard]] std::vector<Limit> distinctLimits(std::vector<Limit> limits);

/// Copies percentage and reset to the limit's fields of the quota, if it has any.
void copyToQuota(const Limit &limit, QuotaData &quota);

/// Whether the limit's reset is plausible and not over.
[[nodiscard]] bool isInPresentWindow(const Limit &limit, Instant now);

} // namespace burnwick
