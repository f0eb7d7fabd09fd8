// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Snapshot.h"

#include <string>

/// Tables of UTF-8 as RFC 4180 defines CSV: a header, lines that end in CR LF, texts in quotation marks. A
/// cell is empty where a figure is unknown, such as a cost without any price. Costs are US dollars.
///
/// Control characters in texts become U+FFFD. A text that a spreadsheet would take for a formula gets an
/// apostrophe in front: one that begins with "=", "+", "-", or "@".
namespace burnwick {

[[nodiscard]] std::string projectsCsv(const UsageFigures &usage);
[[nodiscard]] std::string modelsCsv(const UsageFigures &usage);
[[nodiscard]] std::string daysCsv(const UsageFigures &usage);

} // namespace burnwick
