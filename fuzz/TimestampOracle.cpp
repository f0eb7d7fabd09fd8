// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "fuzz/Oracles.h"
#include "model/Timestamp.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

namespace burnwick::fuzz {

namespace {

/// Whether the text, with each digit replaced by 0, is one of all forms of an internet date-time.
bool hasForm(std::string_view text) {
    std::string form(text);
    for (char &c : form)
        c = c >= '0' && c <= '9' ? '0' : c;
    for (const char *zone : {"Z", "+00:00", "-00:00"}) {
        for (std::size_t digits = 0; digits <= 9; ++digits) {
            const std::string fraction = digits == 0 ? "" : "." + std::string(digits, '0');
            if (form == "0000-00-00T00:00:00" + fraction + zone)
                return true;
        }
    }
    return false;
}

/// Returns the instant by the C library's calendar.
std::optional<Instant> naiveInstant(std::string_view text) {
    if (!hasForm(text))
        return std::nullopt;
    const auto number = [&](std::size_t at, std::size_t size) {
        return std::atoi(std::string(text.substr(at, size)).c_str());
    };
    std::tm fields{};
    fields.tm_year = number(0, 4) - 1900;
    fields.tm_mon = number(5, 2) - 1;
    fields.tm_mday = number(8, 2);
    fields.tm_hour = number(11, 2);
    fields.tm_min = number(14, 2);
    fields.tm_sec = number(17, 2);
    std::tm normal = fields;
    const std::time_t seconds = timegm(&normal);
    // timegm() changes the fields of a date or time that does not exist.
    const bool exists = normal.tm_mon == fields.tm_mon && normal.tm_mday == fields.tm_mday &&
                        normal.tm_hour == fields.tm_hour && normal.tm_min == fields.tm_min &&
                        normal.tm_sec == fields.tm_sec;
    if (!exists || number(0, 4) < 1678 || number(0, 4) > 2261)
        return std::nullopt;

    const std::size_t zone = text.find_first_of("Z+-", 19);
    std::string fraction(text.substr(19, zone - 19));
    fraction.resize(10, '0');
    int offset = 0;
    if (text[zone] != 'Z') {
        if (number(zone + 1, 2) > 23 || number(zone + 4, 2) > 59)
            return std::nullopt;
        offset = (number(zone + 1, 2) * 60 + number(zone + 4, 2)) * (text[zone] == '-' ? -1 : 1);
    }
    return Instant(std::chrono::seconds(seconds) - std::chrono::minutes(offset) +
                   std::chrono::nanoseconds(std::atoi(fraction.c_str() + 1)));
}

} // namespace

const char *checkTimestamp(std::string_view input) {
    const auto timestamp = parseTimestamp(input);
    const auto naive = naiveInstant(input);
    require(timestamp.has_value() == naive.has_value(), "exactly the grammar is accepted");
    if (!timestamp)
        return "refused";
    require(timestamp == naive, "the instant is correct");
    const std::size_t fractionDigits = std::max<std::size_t>(input.size(), 21) - 21;
    require(!input.ends_with('Z') || printTimestamp(*timestamp, fractionDigits) == input,
            "printing restores the text");
    require(parseLogInstant(input).has_value() == (input.find('.') != std::string_view::npos),
            "log lines have a fraction");
    return "accepted";
}

} // namespace burnwick::fuzz
