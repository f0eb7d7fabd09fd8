// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "prices/PriceTable.h"

#include "model/Timestamp.h"
#include "prices/ModelName.h"
#include "json/JsonFile.h"
#include "json/JsonReading.h"

#include <QFile>
#include <QJsonArray>
#include <QLoggingCategory>
#include <QStandardPaths>

#include <cmath>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <utility>

inline void initializePrices() {
    Q_INIT_RESOURCE(burnwick_prices);
}

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(pricesLog, "burnwick.prices")

constexpr Picodollars pricePerWebSearch = 10'000'000'000; // 10 dollars for a thousand

/// Returns a price in dollars for a million tokens as one for a token.
Picodollars perToken(const QJsonObject &object, QLatin1String key) {
    const double price = requiredNumber(object, key);
    constexpr double highest = 1e6;
    if (!(price >= 0) || price > highest)
        throw DecodeError("\"" + std::string(key.data()) + "\" is no price");
    return std::llround(price * 1e6);
}

TokenPrices pricesIn(const QJsonObject &object) {
    return {perToken(object, QLatin1String("input")), perToken(object, QLatin1String("cache_write_5m")),
            perToken(object, QLatin1String("cache_write_1h")), perToken(object, QLatin1String("cache_read")),
            perToken(object, QLatin1String("output"))};
}

/// Returns the factor times 1000.
std::int64_t permilleIn(const QJsonObject &object, QLatin1String key) {
    const double factor = requiredNumber(object, key);
    if (!(factor > 0) || factor > 1000)
        throw DecodeError("\"" + std::string(key.data()) + "\" is no factor");
    return std::llround(factor * 1000);
}

/// Returns the begin of a day in UTC.
Instant dayIn(const QJsonObject &object, QLatin1String key, Instant fallback) {
    const auto text = optionalString(object, key);
    if (!text)
        return fallback;
    const auto instant = parseTimestamp(text->toStdString() + "T00:00:00Z");
    if (!instant)
        throw DecodeError("\"" + std::string(key.data()) + "\" is no date");
    return *instant;
}

/// The whole request's prices times the factor.
TokenPrices times(const TokenPrices &prices, std::int64_t permille) {
    const auto scaled = [permille](Picodollars price) { return (price * permille + 500) / 1000; };
    return {scaled(prices.input), scaled(prices.cacheWrite5m), scaled(prices.cacheWrite1h),
            scaled(prices.cacheRead), scaled(prices.output)};
}

PriceRow rowIn(const QJsonObject &object) {
    PriceRow row;
    row.from = dayIn(object, QLatin1String("effective_from"), row.from);
    row.until = dayIn(object, QLatin1String("effective_until"), row.until);
    row.prices = pricesIn(object);
    if (const auto tier = optionalObject(object, QLatin1String("tier"))) {
        const double threshold = requiredNumber(*tier, QLatin1String("prompt_tokens_above"));
        if (!(threshold >= 0) || threshold > 1e15)
            throw DecodeError("\"prompt_tokens_above\" is no number of tokens");
        row.tier = {std::llround(threshold), pricesIn(*tier)};
    }
    if (const auto fast = optionalObject(object, QLatin1String("fast"))) {
        const std::int64_t factor = permilleIn(*fast, QLatin1String("multiplier"));
        row.fast.emplace();
        row.fast->until = dayIn(*fast, QLatin1String("until"), row.fast->until);
        row.fast->prices = times(row.prices, factor);
        row.fast->prices.input = perToken(*fast, QLatin1String("input"));
        row.fast->prices.output = perToken(*fast, QLatin1String("output"));
        if (row.tier)
            row.fast->tierPrices = times(row.tier->prices, factor);
    }
    if (!object.value(QLatin1String("us_geo_multiplier")).isUndefined())
        row.unitedStatesPermille = permilleIn(object, QLatin1String("us_geo_multiplier"));
    return row;
}

/// A sum of products that notices when it does not fit.
class CheckedSum {
public:
    CheckedSum &add(std::int64_t count, Picodollars price) {
        Picodollars amount = 0;
        m_fits = m_fits && count >= 0 && !__builtin_mul_overflow(count, price, &amount) &&
                 !__builtin_add_overflow(m_sum, amount, &m_sum);
        return *this;
    }
    CheckedSum &scale(std::int64_t permille) {
        Picodollars product = 0;
        m_fits = m_fits && !__builtin_mul_overflow(m_sum, permille, &product) &&
                 !__builtin_add_overflow(product, Picodollars{500}, &product);
        m_sum = product / 1000;
        return *this;
    }
    [[nodiscard]] std::optional<Picodollars> value() const {
        return m_fits ? std::optional(m_sum) : std::nullopt;
    }

private:
    Picodollars m_sum = 0;
    bool m_fits = true;
};

} // namespace

std::optional<Picodollars> PriceRow::priceOf(const BilledMessage &message) const {
    if (message.isFast && (!fast || message.at >= fast->until))
        return std::nullopt;
    const auto prompt = CheckedSum()
                            .add(message.input, 1)
                            .add(message.cacheWrite5m, 1)
                            .add(message.cacheWrite1h, 1)
                            .add(message.cacheRead, 1)
                            .value();
    if (!prompt)
        return std::nullopt;
    const bool isLong = tier && *prompt > tier->promptTokensAbove;
    const TokenPrices &tokens =
        message.isFast ? (isLong ? *fast->tierPrices : fast->prices) : (isLong ? tier->prices : prices);
    CheckedSum sum;
    sum.add(message.input, tokens.input)
        .add(message.cacheWrite5m, tokens.cacheWrite5m)
        .add(message.cacheWrite1h, tokens.cacheWrite1h)
        .add(message.cacheRead, tokens.cacheRead)
        .add(message.output, tokens.output);
    if (message.isBatch)
        sum.scale(500);
    if (message.isInUnitedStates)
        sum.scale(unitedStatesPermille);
    return sum.add(message.webSearches, pricePerWebSearch).value();
}

std::optional<Picodollars> PriceTable::ModelPrices::priceOf(const BilledMessage &message) const {
    for (const PriceRow *row : m_rows) {
        if (message.at >= row->from && message.at < row->until)
            return row->priceOf(message);
    }
    return std::nullopt;
}

PriceTable PriceTable::ofProduct() {
    initializePrices();
    QFile file(QStringLiteral(":/burnwick/prices/prices.json"));
    static_cast<void>(file.open(QIODevice::ReadOnly)); // it cannot be missing
    return PriceTable(file.readAll());
}

PriceTable PriceTable::ofUser() {
    PriceTable table = ofProduct();
    const std::filesystem::path file =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString() +
        "/burnwick/prices.json";
    std::error_code error;
    if (!std::filesystem::exists(file, error))
        return table;
    try {
        table.prepend(PriceTable(jsonFileBytes(file)));
    } catch (const DecodeError &problem) {
        qCWarning(pricesLog, "%s is ignored: %s", file.c_str(), problem.what());
    }
    return table;
}

PriceTable::PriceTable(const QByteArray &json) {
    const QJsonValue list = parseJsonObject(json).value(QLatin1String("rows"));
    if (!list.isArray())
        throw DecodeError("\"rows\" is missing or no list");
    Rows &rows = m_lists.emplace_back();
    int number = 0;
    for (const QJsonValue value : list.toArray()) {
        ++number;
        try {
            const QJsonObject object = value.toObject();
            const QJsonArray ids = object.value(QLatin1String("ids")).toArray();
            if (ids.isEmpty())
                throw DecodeError("\"ids\" is missing or empty");
            const PriceRow row = rowIn(object);
            for (const QJsonValue id : ids) {
                if (id.toString().isEmpty())
                    throw DecodeError("an element of \"ids\" is no name");
                rows.emplace(id.toString().toStdString(), row);
            }
        } catch (const DecodeError &error) {
            throw DecodeError("row " + std::to_string(number) + ": " + error.what());
        }
    }
}

void PriceTable::prepend(PriceTable other) {
    m_lists.insert(m_lists.begin(), std::make_move_iterator(other.m_lists.begin()),
                   std::make_move_iterator(other.m_lists.end()));
}

PriceTable::ModelPrices PriceTable::pricesOf(std::string_view model) const {
    ModelPrices prices;
    for (const Rows &rows : m_lists) {
        for (const std::string_view name : priceListNames(model)) {
            const auto [first, last] = rows.equal_range(name);
            for (auto row = first; row != last; ++row)
                prices.m_rows.push_back(&row->second);
        }
    }
    return prices;
}

} // namespace burnwick
