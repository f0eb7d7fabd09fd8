// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

#include <string>

namespace burnwick {

class Ledger;

/// Exchanges usage lines between the ledger and a CSV file; "-" is standard output or input. Both functions
/// return one line for the user, with its line feed, and throw std::runtime_error with the reason of a
/// failure.

/// Writes the usage lines that the ledger's last series knew. Replaces a regular file as a whole, with mode
/// 0600; a failure leaves the old one.
[[nodiscard]] std::string exportHistory(Ledger &ledger, const QString &file);
/// Imports all lines of the file, or none if one is malformed.
[[nodiscard]] std::string importHistory(Ledger &ledger, const QString &file);

} // namespace burnwick
