// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "forms/ReportFigures.h"

#include <string>
#include <string_view>

namespace burnwick {

/// All the figures as one indented JSON object for programs, with its last line feed. Numbers are exact:
/// doubles read back to the same value, counts are integers.
[[nodiscard]] std::string jsonForm(const ReportFigures &figures, std::string_view version);

} // namespace burnwick
