// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace burnwick {

/// Whether a URL's host is this machine: "localhost", 127.0.0.0/8 or ::1. Thread-safe.
[[nodiscard]] bool isLoopback(const QString &host);

} // namespace burnwick
