// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Snapshot.h"

#include <string>

/// The status title and a tool tip for the bars of GTK desktops, in Pango markup.
namespace burnwick {

/// Returns one line of JSON for a custom module of waybar whose return type is json; it has no percentage
/// while the quota is not known. The tool tip has a line for each limit, forecast at `now`.
[[nodiscard]] std::string waybarForm(const Snapshot &snapshot, Instant now);

/// Returns the output for Xfce's generic monitor, which runs a command and reads its output,
/// with the same tool tip.
[[nodiscard]] std::string genmonForm(const Snapshot &snapshot, Instant now);

} // namespace burnwick
