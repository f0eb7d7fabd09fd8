// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/UsageDetails.h"
#include "model/Instant.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace burnwick {

/// A cell of a CSV file, without its quotes.
struct Cell {
    std::string_view text;
    bool isNull = false; ///< whether it is empty and has no quotes
};

/// Append a cell to the row.
void printCell(std::string &row, InternedString text);
void printCell(std::string &row, std::int64_t count);
/// 16 hexadecimal digits; empty for 0.
void printCell(std::string &row, std::uint64_t key);
/// "true" or "false".
void printCell(std::string &row, bool flag);
/// Dollars with 12 decimals; empty for null.
void printCell(std::string &row, const std::optional<std::int64_t> &cost);
/// "2025-01-15T10:30:45.123456789Z", also for the years 1677 and 2262; empty for null.
void printCell(std::string &row, const std::optional<Instant> &time);
/// JSON: [["model",input,output,cache writes,cache reads],...]; empty for an empty list.
void printCell(std::string &row, const std::vector<AdvisorUsage> &advisors);

/// Read such a cell into a value that is still empty. Return false for a malformed one.
[[nodiscard]] bool parseCell(const Cell &cell, InternedString &text);
[[nodiscard]] bool parseCell(const Cell &cell, std::int64_t &count);
[[nodiscard]] bool parseCell(const Cell &cell, std::uint64_t &key);
[[nodiscard]] bool parseCell(const Cell &cell, bool &flag);
[[nodiscard]] bool parseCell(const Cell &cell, std::optional<std::int64_t> &cost);
[[nodiscard]] bool parseCell(const Cell &cell, std::optional<Instant> &time);
[[nodiscard]] bool parseCell(const Cell &cell, std::vector<AdvisorUsage> &advisors);

} // namespace burnwick
