// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include <simdjson.h>

// Readings of JSON by a library that the code under test does not use for JSON.
namespace burnwick::fuzz {

/// Returns the document by simdjson, without a byte order mark; valid until the next call.
[[nodiscard]] std::optional<simdjson::dom::element> plainReading(std::string_view text);

/// Whether the text contains one, or its escape. Qt drops it at the beginning of a JSON string.
[[nodiscard]] bool hasByteOrderMark(std::string_view text);

/// Whether the text may contain JSON that simdjson rejects: half of a surrogate pair, a number out of range
/// or with too many digits, or a nesting of a thousand levels.
[[nodiscard]] bool mayBeBeyondPlainReading(std::string_view text);

/// Returns the value of the last of equal keys; absent without the key, or if the value is no object.
[[nodiscard]] std::optional<simdjson::dom::element> lastMember(const simdjson::dom::element &object,
                                                               std::string_view key);

} // namespace burnwick::fuzz
