// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/JSONLEntry.h"
#include "logs/UsageDetails.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace burnwick {

/// Numbers for interned texts, which blobs have instead of them.
class NameTable {
public:
    virtual ~NameTable() = default;
    /// Returns the text's number, never 0 and always the same; 0 for null.
    virtual std::int64_t numberOf(InternedString name) = 0;
    /// Returns the text, the null text for 0; nullopt for an unknown number.
    virtual std::optional<InternedString> named(std::int64_t number) = 0;
};

/// Encodes usage lines compactly: numbers in groups of seven bits, times and names as differences from the
/// line before. Lines must be of the type "assistant"; sessions are not encoded.
[[nodiscard]] std::string encodeEntries(std::span<const JSONLEntry> entries, NameTable &names);
[[nodiscard]] std::string encodeDetails(std::span<const UsageDetails> details, NameTable &names);

/// Append what was encoded to the list. Return false, with the list unchanged or longer, if the bytes are
/// malformed or name an unknown text.
[[nodiscard]] bool decodeEntries(std::string_view bytes, NameTable &names, InternedString session,
                                 std::vector<JSONLEntry> &entries);
[[nodiscard]] bool decodeDetails(std::string_view bytes, NameTable &names,
                                 std::vector<UsageDetails> &details);

} // namespace burnwick
