// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Calendar.h"
#include "model/Instant.h"

#include <filesystem>

class QString;
class QUrl;

namespace burnwick::test {
class LogHome;
}

namespace burnwick::demo {

/// Writes the session logs of somebody who has worked with three models for two months, most of all in the
/// mornings and afternoons of working days, and who is at work now. The same logs for the same instant and
/// calendar.
void addLogs(const test::LogHome &home, Instant now, const Calendar &calendar);

/// Writes a login that does not expire.
void addLogin(const std::filesystem::path &home);

/// Writes settings with that theme, and with all the services at that address.
void addSettings(const std::filesystem::path &home, const QUrl &services, const QString &theme);

} // namespace burnwick::demo
