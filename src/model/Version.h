// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace burnwick {

/// This program's version, such as "0.1.0".
[[nodiscard]] std::string_view version() noexcept;

} // namespace burnwick
