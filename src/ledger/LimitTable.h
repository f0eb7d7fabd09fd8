// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ledger/LedgerFile.h"
#include "model/Limit.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace burnwick {

/// The ledger's table of samples of limits. Each row has some samples of one window, in whole seconds and
/// hundredths of a percent. All operations throw SQLite::Exception and DamagedLedger. For one thread at a
/// time.
class LimitTable final {
public:
    /// The database must outlive the object.
    explicit LimitTable(SQLite::Database &database);
    ~LimitTable();

    /// Appends the samples of the limit's window up to the observation, which is the last one, to the list.
    /// Stores the observation if it adds something to the table. Returns false, and stores nothing, if it
    /// would have to but `mayWrite` is false. A limit that is not in its window is not stored, and its
    /// observation the only sample. With `mayWrite` it needs an open transaction.
    [[nodiscard]] bool record(const Limit &limit, bool mayWrite, std::vector<LimitSample> &samples);
    /// Returns the last observation up to `now` of each limit whose window resets after that; by kind and
    /// model.
    [[nodiscard]] std::vector<Limit> lastLimits(Instant now);
    /// Reads all rows.
    void check();

private:
    struct Statements;
    /// A row.
    struct Part {
        Instant resetsAt; ///< the window's first known one
        Limit::Kind kind;
        std::string model;
        std::int64_t begin;               ///< the time of the first sample, in seconds
        Limit::Source source;             ///< of the last sample
        std::vector<LimitSample> samples; ///< in order; not empty
    };

    std::vector<Part> partsBetween(Instant firstReset, Instant lastReset);
    std::vector<Part> partsOf(const Limit &limit);
    void replace(const Part &part);

    std::unique_ptr<Statements> m_statements;
};

} // namespace burnwick
