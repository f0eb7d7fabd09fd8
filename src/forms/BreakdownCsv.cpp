// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/BreakdownCsv.h"

#include "display/PriceText.h"
#include "forms/BreakdownRows.h"
#include "forms/IsoText.h"

#include <QtCore/QByteArray>
#include <QtCore/QLocale>
#include <QtCore/QString>

#include <concepts>
#include <initializer_list>

namespace burnwick {

namespace {

std::string cell(const std::string &utf8) {
    QString text = QString::fromStdString(utf8);
    for (QChar &character : text) {
        if (character.category() == QChar::Other_Control)
            character = QChar::ReplacementCharacter;
    }
    if (!text.isEmpty() && QStringLiteral("=+-@").contains(text.front()))
        text.prepend(u'\'');
    text.replace(u'"', QStringLiteral("\"\""));
    return (u'"' + text + u'"').toStdString();
}

std::string cell(std::signed_integral auto count) {
    return std::to_string(count);
}

/// Returns the fewest digits that give the same number, without an exponent.
std::string cell(double amount) {
    return QByteArray::number(amount, 'f', QLocale::FloatingPointShortest).toStdString();
}

template <typename Value>
std::string cell(const std::optional<Value> &value) {
    return value ? cell(*value) : std::string();
}

std::string cell(const std::optional<Instant> &instant) {
    return isoInstant(instant).value_or("");
}

std::string cell(LocalDay day) {
    return isoDate(day);
}

template <typename... Values>
void addLine(std::string &csv, const Values &...values) {
    const char *separator = "";
    for (const std::string &text : {cell(values)...}) {
        csv += separator + text;
        separator = ",";
    }
    csv += "\r\n";
}

} // namespace

std::string projectsCsv(const UsageFigures &usage) {
    std::string csv = "path,sessions,tokens,cost_usd,unpriced_tokens,last_used\r\n";
    for (const ProjectRow &row : projectRows(usage))
        addLine(csv, row.path, row.sessions, row.tokens, costOf(row.price), row.price.unpriced, row.lastUsed);
    return csv;
}

std::string modelsCsv(const UsageFigures &usage) {
    std::string csv = "model,input_tokens,output_tokens,cache_write_5m_tokens,cache_write_1h_tokens,"
                      "cache_read_tokens,web_searches,cost_usd,unpriced_tokens\r\n";
    for (const ModelRow &row : modelRows(usage)) {
        const std::int64_t unpriced = row.price.value_or(PricedTokens()).unpriced;
        addLine(csv, row.name, row.input, row.output, row.cacheWrite5m, row.cacheWrite1h, row.cacheRead,
                row.webSearches, row.price ? costOf(*row.price) : std::nullopt, unpriced);
    }
    return csv;
}

std::string daysCsv(const UsageFigures &usage) {
    std::string csv = "day,tokens,cost_usd,unpriced_tokens\r\n";
    for (const DayRow &row : dayRows(usage))
        addLine(csv, row.day, row.tokens, costOf(row.price), row.price.unpriced);
    return csv;
}

} // namespace burnwick
