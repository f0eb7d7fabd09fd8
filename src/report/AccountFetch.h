// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "forms/ReportFigures.h"

#include <filesystem>
#include <optional>
#include <string>

namespace burnwick {

class Calendar;
class Clock;

/// What came of asking the vendor's services.
struct AccountAnswer {
    std::optional<QuotaData> quota;
    AccountFigures figures;
    std::string failure; ///< why there is no quota, without secrets and addresses; empty when there is one
};

/// Asks once, and at the same time, for the quota and for the service's status, with the login in that home
/// directory and the addresses in the user's settings. A token that has to be renewed is renewed and stored;
/// meanwhile, for some seconds, signals do not end the program.
///
/// Waits for both: 10 seconds at most for each exchange, of which a quota takes up to four. Throws nothing.
/// Main thread only; makes an application object for the time it takes, so there must be none.
[[nodiscard]] AccountAnswer fetchAccount(const std::filesystem::path &home, const Clock &clock,
                                         const Calendar &calendar);

} // namespace burnwick
