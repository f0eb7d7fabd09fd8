// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/HistoryCells.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QVariant>

#include <charconv>
#include <cstdio>

#include <csv.h>
#include <simdjson.h>

namespace burnwick {

namespace {

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;

/// Appends the text as printf() formats it, of at most 63 bytes.
template <typename... Values>
void printTo(std::string &row, const char *format, Values... values) {
    char text[64];
    std::snprintf(text, sizeof text, format, values...);
    row += text;
}

void printQuoted(std::string &row, std::string_view text) {
    const std::size_t begin = row.size();
    row.resize(begin + csv_write(nullptr, 0, text.data(), text.size()));
    csv_write(row.data() + begin, row.size() - begin, text.data(), text.size());
}

template <typename Number>
bool parseNumber(std::string_view text, Number &number, int base = 10) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    return error == std::errc() && end == text.data() + text.size();
}

} // namespace

void printCell(std::string &row, InternedString text) {
    if (text.hasValue())
        printQuoted(row, text.view());
}

void printCell(std::string &row, std::int64_t count) {
    row += std::to_string(count);
}

void printCell(std::string &row, std::uint64_t key) {
    if (key != 0)
        printTo(row, "%016llx", static_cast<unsigned long long>(key));
}

void printCell(std::string &row, bool flag) {
    row += flag ? "true" : "false";
}

void printCell(std::string &row, const std::optional<std::int64_t> &cost) {
    constexpr unsigned long long dollar = 1'000'000'000'000;
    if (!cost)
        return;
    const auto bits = static_cast<unsigned long long>(*cost);
    const unsigned long long amount = *cost < 0 ? 0 - bits : bits;
    printTo(row, "%s%llu.%012llu", *cost < 0 ? "-" : "", amount / dollar, amount % dollar);
}

void printCell(std::string &row, const std::optional<Instant> &time) {
    using namespace std::chrono;
    if (!time)
        return;
    const auto second = floor<seconds>(*time);
    const auto day = floor<days>(second);
    const year_month_day date(day);
    const hh_mm_ss clock(second - day);
    const std::int64_t fraction = time->time_since_epoch().count() % nanosecondsPerSecond;
    printTo(row, "%04d-%02u-%02uT%02d:%02d:%02d.%09dZ", static_cast<int>(date.year()),
            static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
            static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
            static_cast<int>(clock.seconds().count()),
            static_cast<int>(fraction < 0 ? fraction + nanosecondsPerSecond : fraction));
}

void printCell(std::string &row, const std::vector<AdvisorUsage> &advisors) {
    if (advisors.empty())
        return;
    QJsonArray list;
    for (const auto &[model, counts] : advisors) {
        const std::string_view name = model.view();
        list += QJsonArray{model.hasValue() ? QJsonValue(QString::fromUtf8(name.data(), std::ssize(name)))
                                            : QJsonValue(),
                           qint64(counts.input), qint64(counts.output), qint64(counts.cacheCreation),
                           qint64(counts.cacheRead)};
    }
    printQuoted(row, QJsonDocument(list).toJson(QJsonDocument::Compact).toStdString());
}

bool parseCell(const Cell &cell, InternedString &text) {
    text = cell.isNull ? InternedString() : InternedString(cell.text);
    return simdjson::validate_utf8(cell.text.data(), cell.text.size());
}

bool parseCell(const Cell &cell, std::int64_t &count) {
    return parseNumber(cell.text, count);
}

bool parseCell(const Cell &cell, std::uint64_t &key) {
    constexpr std::size_t digits = 16;
    return cell.text.empty() || (cell.text.size() == digits && parseNumber(cell.text, key, 16));
}

bool parseCell(const Cell &cell, bool &flag) {
    flag = cell.text == "true";
    return flag || cell.text == "false";
}

bool parseCell(const Cell &cell, std::optional<std::int64_t> &cost) {
    if (cell.text.empty())
        return true;
    constexpr std::size_t decimals = 12;
    const std::size_t point = cell.text.find('.');
    if (point == 0 || point + 1 + decimals != cell.text.size())
        return false;
    std::string digits(cell.text);
    return parseNumber(digits.erase(point, 1), cost.emplace());
}

bool parseCell(const Cell &cell, std::optional<Instant> &time) {
    using namespace std::chrono;
    if (cell.text.empty())
        return true;
    const std::string_view text = cell.text;
    const auto number = [&](std::size_t begin, std::size_t size) {
        int value = 0;
        return begin + size <= text.size() && parseNumber(text.substr(begin, size), value) ? value : 0;
    };
    const year_month_day date(year(number(0, 4)), month(static_cast<unsigned>(number(5, 2))),
                              day(static_cast<unsigned>(number(8, 2))));
    auto second =
        sys_seconds(sys_days(date)) + hours(number(11, 2)) + minutes(number(14, 2)) + seconds(number(17, 2));
    std::int64_t nanoseconds = number(20, 9);
    if (second < sys_seconds()) { // the product of the first representable second would overflow
        second += 1s;
        nanoseconds -= nanosecondsPerSecond;
    }
    std::int64_t count = second.time_since_epoch().count();
    if (__builtin_mul_overflow(count, nanosecondsPerSecond, &count) ||
        __builtin_add_overflow(count, nanoseconds, &count))
        return false;
    time = Instant(Instant::duration(count));
    std::string printed; // differs after a day or an hour that does not exist
    printCell(printed, time);
    return printed == text;
}

bool parseCell(const Cell &cell, std::vector<AdvisorUsage> &advisors) {
    if (cell.text.empty())
        return true;
    const auto document = QJsonDocument::fromJson(QByteArray(cell.text.data(), std::ssize(cell.text)));
    for (const QJsonValue &element : document.array()) {
        const QJsonArray values = element.toArray();
        if (values.size() != 5 || !(values[0].isString() || values[0].isNull()))
            return false;
        auto &[model, counts] = advisors.emplace_back();
        if (values[0].isString())
            model = InternedString(values[0].toString().toStdString());
        qsizetype i = 0;
        for (const auto member : {&SessionTokens::input, &SessionTokens::output,
                                  &SessionTokens::cacheCreation, &SessionTokens::cacheRead}) {
            const QVariant count = values[++i].toVariant();
            if (count.typeId() != QMetaType::LongLong)
                return false;
            counts.*member = count.toLongLong();
        }
    }
    return !advisors.empty();
}

} // namespace burnwick
