// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "forms/ReportFigures.h"

#include <string>

namespace burnwick {

/// The status title and its tool tip for Xfce's generic monitor, which runs a command and reads its output.
[[nodiscard]] std::string genmonForm(const SessionFigures &session);

} // namespace burnwick
