// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ledger/SessionLines.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Usage lines as CSV (RFC 4180, UTF-8): a header row with the columns' names, then a row for each line. A
/// null text is an empty cell without quotes, an empty text one with quotes.
namespace burnwick {

/// Returns the header row.
[[nodiscard]] std::string historyCsvHeader();

/// Appends a row for each line to the text. Lines must be of the type "assistant"; the texts must be UTF-8.
void appendHistoryCsv(std::string &text, const SessionLines &lines);

/// The text names the line of the file, and the column if one is malformed.
class MalformedHistory final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Decodes such a text. Strict, except that columns may come in any order and that unknown ones are ignored.
class HistoryCsvReader final {
public:
    HistoryCsvReader();
    ~HistoryCsvReader();

    /// Reads the next part of the text. Throws MalformedHistory and std::bad_alloc; the reader is useless
    /// afterwards.
    void add(std::string_view bytes);
    /// Ends the text and returns its lines, each session once. Throws as add() does, also when the last row
    /// does not end with a line feed.
    [[nodiscard]] std::vector<SessionLines> finish();

private:
    class Rows;
    std::unique_ptr<Rows> m_rows;
};

} // namespace burnwick
