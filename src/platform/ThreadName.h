// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

namespace burnwick::platform {

/// Names the calling thread for debuggers and process viewers. At most 15 characters.
void nameThisThread(const char *name) noexcept;

} // namespace burnwick::platform
