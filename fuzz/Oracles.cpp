// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "fuzz/Oracles.h"

namespace burnwick::fuzz {

const std::array<Oracle, 8> &allOracles() {
    static constexpr std::array<Oracle, 8> oracles{{
        {"appcast", checkAppcast},
        {"credentials", checkCredentials},
        {"log-file", checkLogFile},
        {"log-growth", checkLogGrowth},
        {"log-line", checkLogLine},
        {"settings", checkSettings},
        {"timestamp", checkTimestamp},
        {"usage-response", checkUsageResponse},
    }};
    return oracles;
}

} // namespace burnwick::fuzz
