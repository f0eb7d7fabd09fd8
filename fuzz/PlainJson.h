// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include <simdjson.h>

// Readings of JSON by a library that none of the code under test uses for JSON.
namespace burnwick::fuzz {

/// The document as simdjson reads it, without a byte order mark; lives until the next call.
[[nodiscard]] std::optional<simdjson::dom::element> plainReading(std::string_view text);

/// Whether there is one anywhere, or its escape. Qt drops it from the beginning of a JSON string.
[[nodiscard]] bool hasByteOrderMark(std::string_view text);

/// Whether the text may have something that is JSON, but beyond what simdjson reads: half of a surrogate
/// pair, a number of a size or length that does not fit, or nesting to a thousand levels.
[[nodiscard]] bool mayBeBeyondPlainReading(std::string_view text);

/// The value of the last of equal keys; none when there is no such key or the value is no object.
[[nodiscard]] std::optional<simdjson::dom::element> lastMember(const simdjson::dom::element &object,
                                                               std::string_view key);

} // namespace burnwick::fuzz
