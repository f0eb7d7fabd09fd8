// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <SQLiteCpp/SQLiteCpp.h>

#include <cstdint>
#include <string_view>

namespace burnwick {

/// Returns the checksum of a row's bytes; the same bytes in another row have another one.
[[nodiscard]] std::int64_t checksumOf(std::string_view bytes, std::int64_t row);

/// One use of a prepared statement. Resets it at the end, because an unfinished one keeps its transaction
/// open. All operations throw SQLite::Exception.
class StatementUse {
public:
    template <typename... Values> // 64-bit integers or std::string_view for bytes
    explicit StatementUse(SQLite::Statement &statement, const Values &...values)
        : m_statement(statement) {
        int index = 0;
        (bind(++index, values), ...);
    }
    ~StatementUse() { m_statement.tryReset(); }
    StatementUse(const StatementUse &) = delete;
    StatementUse &operator=(const StatementUse &) = delete;

    void bind(int index, std::int64_t value) { m_statement.bind(index, value); }
    void bind(int index, std::string_view bytes) {
        // A null pointer would bind NULL.
        const void *data = bytes.empty() ? "" : bytes.data();
        m_statement.bindNoCopy(index, data, static_cast<int>(bytes.size()));
    }
    void run() { m_statement.exec(); }
    /// Steps to the next row; returns false at the end.
    bool next() { return m_statement.executeStep(); }
    [[nodiscard]] std::int64_t integer(int column) { return m_statement.getColumn(column).getInt64(); }
    /// Valid until the next step.
    [[nodiscard]] std::string_view bytes(int column) {
        const SQLite::Column value = m_statement.getColumn(column);
        const int size = value.getBytes();
        return size > 0 ? std::string_view(static_cast<const char *>(value.getBlob()),
                                           static_cast<std::size_t>(size))
                        : std::string_view();
    }

private:
    SQLite::Statement &m_statement;
};

} // namespace burnwick
