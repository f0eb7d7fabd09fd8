// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <string_view>
#include <vector>

namespace burnwick::fuzz {

struct JsonMember {
    QString key;
    std::string_view value; ///< as it stands in the text

    bool operator==(const JsonMember &) const = default;
};

/// The members of an object in their order, found by quotes, brackets and commas alone. The text must be
/// valid JSON; one that is not yields nonsense or throws std::out_of_range.
[[nodiscard]] std::vector<JsonMember> jsonMembers(std::string_view object);

} // namespace burnwick::fuzz
