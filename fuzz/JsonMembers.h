// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <string_view>
#include <vector>

namespace burnwick::fuzz {

struct JsonMember {
    QString key;
    std::string_view value; ///< as written in the text

    bool operator==(const JsonMember &) const = default;
};

/// Returns the members of an object in order, found by quotes, brackets and commas alone. The text must be
/// valid JSON; for other text the result is undefined, or std::out_of_range is thrown.
[[nodiscard]] std::vector<JsonMember> jsonMembers(std::string_view object);

} // namespace burnwick::fuzz
