// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

namespace burnwick {

/// Returns the names under which a price list may have the model, the most exact first: the name itself, then
/// without the affixes of long prompts ("[1m]"), of resellers ("us.anthropic.", "-v1:0") and of a release's
/// date ("-20250929"). The views refer to the name.
[[nodiscard]] std::vector<std::string_view> priceListNames(std::string_view model);

} // namespace burnwick
