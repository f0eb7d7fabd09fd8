// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "forms/ReportFigures.h"

#include <string>

namespace burnwick {

/// One line of JSON for a custom module of waybar whose return type is json; without a percentage while the
/// quota is not known.
[[nodiscard]] std::string waybarForm(const SessionFigures &session);

} // namespace burnwick
