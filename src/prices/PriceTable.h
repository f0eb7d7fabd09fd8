// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"
#include "prices/Picodollars.h"

#include <QByteArray>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace burnwick {

/// The prices of a token of each kind.
struct TokenPrices {
    Picodollars input = 0;
    Picodollars cacheWrite5m = 0; ///< kept for five minutes
    Picodollars cacheWrite1h = 0; ///< and for an hour
    Picodollars cacheRead = 0;
    Picodollars output = 0;

    bool operator==(const TokenPrices &) const = default;
};

/// The facts by which a message is priced.
struct BilledMessage {
    Instant at;
    std::int64_t input = 0; ///< tokens, without those of the cache
    std::int64_t cacheWrite5m = 0;
    std::int64_t cacheWrite1h = 0;
    std::int64_t cacheRead = 0;
    std::int64_t output = 0;
    std::int64_t webSearches = 0;
    bool isFast = false;
    bool isBatch = false;
    bool isInUnitedStates = false; ///< whether the inference was bound to the United States
};

/// The prices of some models in a period.
struct PriceRow {
    /// Prices of requests with a long prompt.
    struct Tier {
        std::int64_t promptTokensAbove = 0;
        TokenPrices prices;
    };
    /// Prices of the fast mode.
    struct Fast {
        Instant until = Instant::max(); ///< exclusive
        TokenPrices prices;
        std::optional<TokenPrices> tierPrices{};
    };

    Instant from = Instant::min();
    Instant until = Instant::max(); ///< exclusive
    TokenPrices prices;
    std::optional<Tier> tier{};
    std::optional<Fast> fast{};
    std::int64_t unitedStatesPermille = 1000; ///< the factor of inference in the United States

    /// Returns the message's price. Null if the row has none for it, or if it exceeds 9 million dollars.
    [[nodiscard]] std::optional<Picodollars> priceOf(const BilledMessage &message) const;
};

/// A price list for models: a table of rows with the dates for which they hold. Immutable; thread-safe.
class PriceTable {
public:
    /// The prices of one model, for pricing many of its messages. Valid while the table exists.
    class ModelPrices {
    public:
        /// Returns the message's price at API prices; null if the list has none for the model at that
        /// instant, or none for that kind of message.
        [[nodiscard]] std::optional<Picodollars> priceOf(const BilledMessage &message) const;

    private:
        friend PriceTable;
        std::vector<const PriceRow *> m_rows; ///< the first one that holds at an instant counts
    };

    /// Returns the list of the product, which this program contains.
    [[nodiscard]] static PriceTable ofProduct();
    /// Returns the product's list after the rows of the user's, which is the file "burnwick/prices.json" in
    /// the user's configuration folder. Logs a malformed file and ignores it.
    [[nodiscard]] static PriceTable ofUser();
    /// Parses a list; docs/figures.md describes the form. Throws DecodeError with the row's number.
    explicit PriceTable(const QByteArray &json);

    /// Puts the rows of another list before those of this one.
    void prepend(PriceTable other);
    [[nodiscard]] ModelPrices pricesOf(std::string_view model) const;
    using Rows = std::multimap<std::string, PriceRow, std::less<>>; ///< by the model's name
    /// Returns the rows of each list, in the order of their precedence.
    [[nodiscard]] const std::vector<Rows> &lists() const { return m_lists; }

private:
    std::vector<Rows> m_lists;
};

} // namespace burnwick
