// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "prices/PriceTable.h"

#include "support/ManualClock.h"
#include "json/JsonReading.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

namespace burnwick {
namespace {

constexpr Picodollars dollar = 1'000'000'000'000;
constexpr Picodollars cent = dollar / 100;

BilledMessage messageAt(const char *day) {
    BilledMessage message;
    message.at = test::at((std::string(day) + "T00:00:00Z").c_str());
    return message;
}

/// A message with a million tokens of each kind.
BilledMessage millionsAt(const char *day) {
    BilledMessage message = messageAt(day);
    message.input = message.cacheWrite5m = message.cacheWrite1h = message.cacheRead = message.output =
        1'000'000;
    return message;
}

using Change = void (*)(BilledMessage &);

TEST(PriceTable, PricesAMessageByModelDateKindAndLength) {
    const PriceTable table = PriceTable::ofProduct();
    const struct {
        const char *what, *model, *day;
        Change change;
        std::optional<Picodollars> price;
    } rows[] = {
        {"each kind of token", "claude-opus-5", "2026-08-01", [](BilledMessage &) {}, 4675 * cent},
        {"one token", "claude-haiku-5-5", "2026-10-07",
         [](BilledMessage &m) { m = messageAt("2026-10-07"), m.cacheWrite5m = 1; }, 125'000},
        {"fast", "claude-opus-5", "2026-08-01", [](BilledMessage &m) { m.isFast = true; }, 9350 * cent},
        {"fast on the last day", "claude-opus-4-8", "2026-11-29", [](BilledMessage &m) { m.isFast = true; },
         9350 * cent},
        {"fast no more", "claude-opus-4-8", "2026-11-30", [](BilledMessage &m) { m.isFast = true; }, {}},
        {"never fast", "claude-opus-4-5", "2026-08-01", [](BilledMessage &m) { m.isFast = true; }, {}},
        {"batch in the United States, with searches", "claude-opus-5", "2026-08-01",
         [](BilledMessage &m) { m.isBatch = m.isInUnitedStates = true, m.webSearches = 3; },
         257125 * dollar / 10000 + 3 * cent},
        {"without a price for the United States", "claude-opus-4-1", "2025-09-01",
         [](BilledMessage &m) { m.isInUnitedStates = true; }, 14025 * cent},
        {"before the first day", "claude-opus-5", "2026-07-23", [](BilledMessage &) {}, {}},
        {"before a change", "claude-sonnet-5-5", "2026-10-06", [](BilledMessage &) {}, 1870 * cent},
        {"on the day of a change", "claude-sonnet-5-5", "2026-10-07", [](BilledMessage &) {}, 1860 * cent},
        {"at the limit of the tier", "claude-sonnet-4-5", "2026-08-01",
         [](BilledMessage &m) {
             m = messageAt("2026-08-01"), m.input = 100'000, m.cacheWrite1h = 50'000, m.cacheRead = 50'000,
             m.output = 1'000'000;
         },
         30 * cent + 30 * cent + cent * 3 / 2 + 15 * dollar},
        {"above it", "claude-sonnet-4-5", "2026-08-01",
         [](BilledMessage &m) { m = messageAt("2026-08-01"), m.cacheWrite5m = 200'001, m.output = 1; },
         200'001 * 7'500'000LL + 22'500'000},
        {"sibling's date", "claude-opus-5-20260724", "2026-08-01", [](BilledMessage &) {}, 4675 * cent},
        {"date with @", "claude-opus-5@20260724", "2026-08-01", [](BilledMessage &) {}, 4675 * cent},
        {"long prompts", "claude-opus-5[1m]", "2026-08-01", [](BilledMessage &) {}, 4675 * cent},
        {"reseller", "us.anthropic.claude-opus-5-20260724-v1:0", "2026-08-01", [](BilledMessage &) {},
         4675 * cent},
        {"another reseller", "anthropic/claude-opus-5", "2026-08-01", [](BilledMessage &) {}, 4675 * cent},
        {"a family's name", "opus", "2026-08-01", [](BilledMessage &) {}, {}},
        {"a later sibling", "claude-opus-5-6", "2026-11-01", [](BilledMessage &) {}, {}},
        {"seven digits", "claude-opus-5-2026072", "2026-11-01", [](BilledMessage &) {}, {}},
        {"digits alone", "20260724", "2026-11-01", [](BilledMessage &) {}, {}},
        {"no name", "", "2026-11-01", [](BilledMessage &) {}, {}},
        {"too many tokens",
         "claude-opus-5",
         "2026-08-01",
         [](BilledMessage &m) { m.output = std::numeric_limits<std::int64_t>::max() / 2; },
         {}},
        {"a negative count", "claude-opus-5", "2026-08-01", [](BilledMessage &m) { m.cacheRead = -1; }, {}},
    };
    for (const auto &row : rows) {
        BilledMessage message = millionsAt(row.day);
        row.change(message);
        EXPECT_EQ(table.pricesOf(row.model).priceOf(message), row.price) << row.what;
    }
}

TEST(PriceTable, EveryRowOfTheProductIsPlausible) {
    const std::set<std::string> cheapReads{"claude-fable-5-1", "claude-mythos-5-1", "claude-opus-5-5",
                                           "claude-sonnet-5-5"};
    const std::set<std::string> roundedWrites{"claude-3-haiku", "claude-3-haiku-20240307"};
    const PriceTable table = PriceTable::ofProduct();
    const PriceTable::Rows &rows = table.lists().at(0);
    EXPECT_EQ(rows.size(), 47U);
    for (const auto &[name, row] : rows) {
        SCOPED_TRACE(name);
        EXPECT_LT(row.from, row.until);
        EXPECT_TRUE(row.unitedStatesPermille == 1000 || row.unitedStatesPermille == 1100);
        std::vector<TokenPrices> lists{row.prices};
        if (row.tier) {
            EXPECT_TRUE(row.tier->promptTokensAbove == 100'000 || row.tier->promptTokensAbove == 200'000);
            lists.push_back(row.tier->prices);
            EXPECT_GT(row.tier->prices.output, row.prices.output);
        }
        if (row.fast) {
            EXPECT_EQ(row.fast->prices.input * row.prices.output, row.fast->prices.output * row.prices.input);
            EXPECT_GT(row.fast->prices.output, row.prices.output);
            lists.push_back(row.fast->prices);
        }
        for (const TokenPrices &prices : lists) {
            EXPECT_TRUE(prices.output == 5 * prices.input ||
                        (row.tier && prices.output * 4 == 15 * prices.input));
            EXPECT_EQ(prices.cacheWrite1h, 2 * prices.input);
            if (!roundedWrites.contains(name)) {
                EXPECT_EQ(prices.cacheWrite5m * 4, 5 * prices.input);
                EXPECT_TRUE(prices.cacheRead * 10 == prices.input ||
                            (cheapReads.contains(name) && prices.cacheRead * 10 < prices.input));
            }
        }
        // Rows of one name follow each other.
        const auto next = std::next(rows.find(name));
        if (rows.count(name) > 1 && &next->second != &row) {
            EXPECT_EQ(row.until, next->second.from);
        }
    }
}

constexpr const char *ownRow =
    R"({"ids":["claude-opus-5","own"],"input":1,"cache_write_5m":1,"cache_write_1h":1,"cache_read":1,"output":1%1})";

QByteArray listWith(const char *more) {
    return "{\"rows\":[" + QByteArray(ownRow).replace("%1", more) + "]}";
}

TEST(PriceTable, TheUsersRowsComeFirst) {
    PriceTable table = PriceTable::ofProduct();
    table.prepend(PriceTable(listWith(",\"effective_until\":\"2026-08-01\"")));
    EXPECT_EQ(table.pricesOf("claude-opus-5").priceOf(millionsAt("2026-07-31")), 5 * dollar);
    EXPECT_EQ(table.pricesOf("own").priceOf(millionsAt("2026-07-31")), 5 * dollar);
    EXPECT_EQ(table.pricesOf("own").priceOf(millionsAt("2026-08-01")), std::nullopt);
    EXPECT_EQ(table.pricesOf("claude-opus-5").priceOf(millionsAt("2026-08-01")), 4675 * cent);
    table.prepend(PriceTable(listWith("").replace("claude-opus-5", "claude-opus-4-5")));
    EXPECT_EQ(table.pricesOf("claude-opus-4-5-20251101").priceOf(millionsAt("2026-08-01")), 5 * dollar)
        << "a name with a date, which the product has too";
}

TEST(PriceTable, RejectsAMalformedListWithTheRowsNumber) {
    const std::string first = "row 1: ";
    const std::pair<QByteArray, std::string> rows[] = {
        {"[", "not JSON"},
        {"{}", "\"rows\" is missing"},
        {R"({"rows":[{}]})", first + "\"ids\" is missing"},
        {R"({"rows":[7]})", first + "\"ids\" is missing"},
        {R"({"rows":[{"ids":["a"]}]})", first + "\"input\" is missing"},
        {listWith("").replace("\"own\"", "1"), first + "an element of \"ids\" is no name"},
        {listWith(",\"input\":-1"), first + "\"input\" is no price"},
        {listWith(",\"output\":\"1\""), first + "\"output\" is of another type"},
        {listWith(",\"effective_from\":\"soon\""), first + "\"effective_from\" is no date"},
        {listWith(",\"us_geo_multiplier\":0"), first + "\"us_geo_multiplier\" is no factor"},
        {listWith(",\"tier\":{\"prompt_tokens_above\":-1}"), first + "\"prompt_tokens_above\" is no number"},
        {listWith(",\"fast\":{}"), first + "\"multiplier\" is missing"},
    };
    for (const auto &[list, reason] : rows) {
        try {
            const PriceTable table(list);
            ADD_FAILURE() << list.constData();
        } catch (const DecodeError &error) {
            EXPECT_TRUE(std::string_view(error.what()).starts_with(reason)) << error.what();
        }
    }
}

} // namespace
} // namespace burnwick
