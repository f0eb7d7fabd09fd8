// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

namespace burnwick::platform {

/// Returns the character's columns in a terminal by the system's Unicode tables, independent of the locale: 2
/// for a wide character, 0 for a combining mark, -1 for a control or an unknown character. Safe from any
/// thread.
[[nodiscard]] int terminalColumnsOf(char32_t character);

} // namespace burnwick::platform
