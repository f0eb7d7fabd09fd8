// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/JSONLEntry.h"
#include "logs/UsageDetails.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace burnwick {

/// Encodes usage lines compactly: numbers in groups of seven bits, times as differences from the line before,
/// each text once. Lines must be of the type "assistant"; their sessions are not encoded.
[[nodiscard]] std::string encodeEntries(std::span<const JSONLEntry> entries);
[[nodiscard]] std::string encodeDetails(std::span<const UsageDetails> details);

/// Append what was encoded to the list. Return false, with the list unchanged or longer, if the bytes are
/// malformed.
[[nodiscard]] bool decodeEntries(std::string_view bytes, InternedString session,
                                 std::vector<JSONLEntry> &entries);
[[nodiscard]] bool decodeDetails(std::string_view bytes, std::vector<UsageDetails> &details);

} // namespace burnwick
