// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Limit.h"

#include <QByteArray>
#include <QJsonValue>

#include <optional>
#include <vector>

namespace burnwick {

/// Returns the limits in the JSON that Claude Code writes to the command of its status line: session, weekly,
/// then the scoped ones. Their use is in percent in all of them, also the member "utilization" of the scoped
/// ones, as in the answers of the usage endpoint. Members that are missing, malformed or unknown cost
/// themselves alone, and so do windows that are over: their session has made no request since. Throws
/// DecodeError unless the bytes are a JSON object. Pure.
[[nodiscard]] std::vector<Limit> decodeStatusLine(const QByteArray &json, Instant observedAt);

/// Returns a percentage of use: a number from 0 to 1000; null for any other value.
[[nodiscard]] std::optional<double> usedPercentage(const QJsonValue &value);

/// Returns the instant of a reset, in Unix seconds or as ISO text; null for any other value and an
/// implausible instant.
[[nodiscard]] std::optional<Instant> resetInstant(const QJsonValue &value, Limit::Kind kind,
                                                  Instant observedAt);

} // namespace burnwick
