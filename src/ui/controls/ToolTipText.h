// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace burnwick {

/// A tool tip that shows the text as it stands, line by line, also where it looks like markup.
[[nodiscard]] QString plainToolTip(const QString &text);

} // namespace burnwick
