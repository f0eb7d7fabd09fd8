// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/UsageBreakdown.h"

namespace burnwick::test {

/// Returns the use of eleven projects, one of them unknown and one without a price, and of three models, one
/// of them without a price.
[[nodiscard]] UsageBreakdown sampleBreakdown(Instant now);

} // namespace burnwick::test
