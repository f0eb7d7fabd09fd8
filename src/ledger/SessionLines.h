// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/JSONLEntry.h"
#include "logs/UsageDetails.h"

#include <span>
#include <vector>

namespace burnwick {

/// Usage lines of one session in their order, with their details.
struct SessionLines {
    InternedString session; ///< the name of the log file without its extension
    std::vector<JSONLEntry> entries;
    std::vector<UsageDetails> details; ///< of each entry

    void add(const SessionLines &others);
    /// Removes each line once for each time that the others have it.
    void remove(std::span<const JSONLEntry> others, std::span<const UsageDetails> othersDetails);
    void remove(const SessionLines &others) { remove(others.entries, others.details); }
};

} // namespace burnwick
