// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

namespace burnwick {

/// What the windows are drawn in.
enum class ColorScheme { light, dark };

} // namespace burnwick
