// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Calendar.h"
#include "model/Instant.h"
#include "model/Limit.h"

#include <filesystem>
#include <vector>

class QString;
class QUrl;

namespace burnwick::test {
class LogHome;
}

namespace burnwick::demo {

/// Writes two months of session logs with three models, mostly on working days in the morning and afternoon,
/// with a session in progress. Deterministic for an instant and a calendar.
void addLogs(const test::LogHome &home, Instant now, const Calendar &calendar);

/// Records samples of the limits since their windows began. The use of a session has no pause, that of other
/// limits has nights.
void addSamples(const std::filesystem::path &home, const std::vector<Limit> &limits,
                const Calendar &calendar);

/// Writes a login that does not expire.
void addLogin(const std::filesystem::path &home);

/// Writes settings with that theme and that address of all services.
void addSettings(const std::filesystem::path &home, const QUrl &services, const QString &theme);

} // namespace burnwick::demo
