// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/UsageBreakdown.h"

namespace burnwick {

std::shared_ptr<const UsageBreakdown> noUsage() noexcept {
    static const auto none = std::make_shared<const UsageBreakdown>();
    return none;
}

} // namespace burnwick
