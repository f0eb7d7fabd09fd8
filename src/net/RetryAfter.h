// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <QByteArray>

#include <chrono>
#include <optional>

namespace burnwick {

/// Returns the wait, at least 0, that a Retry-After header asks for at `now`: a number of seconds or an HTTP
/// date in the preferred format. Null for any other text. The wait may be absurdly long.
[[nodiscard]] std::optional<std::chrono::seconds> parseRetryAfter(const QByteArray &header, Instant now);

} // namespace burnwick
