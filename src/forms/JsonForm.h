// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Snapshot.h"

#include <string>
#include <string_view>

namespace burnwick {

/// Returns all the figures as one indented JSON object for programs, with its last line feed. Numbers are
/// exact: doubles read back to the same value, counts are integers. Limits are forecast at `now`.
[[nodiscard]] std::string jsonForm(const Snapshot &snapshot, std::string_view version, Instant now);

} // namespace burnwick
