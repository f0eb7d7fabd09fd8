// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/theme/ColorScheme.h"

#include <QPalette>

namespace burnwick {

/// The application's palette: every role of Qt's, in every group.
///
/// Qt's own widgets get Burnwick's colours by a role: Base is the card, AlternateBase the bar, WindowText and
/// Text the text, PlaceholderText the secondary text, Disabled the tertiary one.
[[nodiscard]] QPalette paletteOf(ColorScheme scheme);

} // namespace burnwick
