// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/Timestamp.h"

#include <cstdio>

namespace burnwick {

namespace {

using std::chrono::minutes;
using std::chrono::nanoseconds;

constexpr int maxFractionDigits = 9;

/// Takes fields off the front of a text; the first mismatch makes every later answer a failure.
class Reader {
public:
    explicit Reader(std::string_view text) noexcept
        : m_text(text) {}

    int digits(std::size_t count) noexcept {
        int value = 0;
        if (m_text.size() < count)
            m_failed = true;
        for (std::size_t i = 0; i < count && !m_failed; ++i) {
            const char c = m_text[i];
            if (c < '0' || c > '9')
                m_failed = true;
            else
                value = value * 10 + (c - '0');
        }
        if (!m_failed)
            m_text.remove_prefix(count);
        return value;
    }

    int digitsUpTo(std::size_t count, int largest) noexcept {
        const int value = digits(count);
        if (value > largest)
            m_failed = true;
        return value;
    }

    bool accept(char c) noexcept {
        if (m_failed || !m_text.starts_with(c))
            return false;
        m_text.remove_prefix(1);
        return true;
    }

    void expect(char c) noexcept {
        if (!accept(c))
            m_failed = true;
    }

    [[nodiscard]] std::size_t countDigits() const noexcept {
        const auto end = m_text.find_first_not_of("0123456789");
        return end == std::string_view::npos ? m_text.size() : end;
    }

    [[nodiscard]] bool failed() const noexcept { return m_failed; }
    [[nodiscard]] bool complete() const noexcept { return !m_failed && m_text.empty(); }

private:
    std::string_view m_text;
    bool m_failed = false;
};

} // namespace

std::optional<Timestamp> parseTimestamp(std::string_view text) noexcept {
    // Whole years that fit into 64 bits of nanoseconds.
    constexpr int firstYear = 1678;
    constexpr int lastYear = 2261;

    Reader in(text);
    const int year = in.digits(4);
    in.expect('-');
    const int month = in.digits(2);
    in.expect('-');
    const int day = in.digits(2);
    in.expect('T');
    const int hour = in.digitsUpTo(2, 23);
    in.expect(':');
    const int minute = in.digitsUpTo(2, 59);
    in.expect(':');
    const int second = in.digitsUpTo(2, 59);

    Timestamp result;
    int fraction = 0;
    if (in.accept('.')) {
        const std::size_t count = in.countDigits();
        if (count == 0 || count > maxFractionDigits)
            return std::nullopt;
        fraction = in.digits(count);
        for (auto i = count; i < maxFractionDigits; ++i)
            fraction *= 10;
        result.fractionDigits = static_cast<std::uint8_t>(count);
    }
    if (!in.accept('Z')) {
        const bool west = in.accept('-');
        if (!west)
            in.expect('+');
        const int offsetHours = in.digitsUpTo(2, 23);
        in.expect(':');
        const int offset = offsetHours * 60 + in.digitsUpTo(2, 59);
        result.offsetMinutes = static_cast<std::int16_t>(west ? -offset : offset);
        result.negativeZeroOffset = west && offset == 0;
    }
    const std::chrono::year_month_day date(std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day)));
    if (!in.complete() || !date.ok() || year < firstYear || year > lastYear)
        return std::nullopt;
    result.instant = std::chrono::sys_days(date) + std::chrono::hours(hour) + minutes(minute) +
                     std::chrono::seconds(second) + nanoseconds(fraction) -
                     minutes(result.offsetMinutes.value_or(0));
    return result;
}

std::optional<Instant> parseLogInstant(std::string_view text) noexcept {
    const auto timestamp = parseTimestamp(text);
    if (!timestamp || timestamp->fractionDigits == 0)
        return std::nullopt;
    return timestamp->instant;
}

std::string printTimestamp(const Timestamp &timestamp) {
    const auto local = timestamp.instant + minutes(timestamp.offsetMinutes.value_or(0));
    const auto midnight = std::chrono::floor<std::chrono::days>(local);
    const std::chrono::year_month_day date(midnight);
    const std::chrono::hh_mm_ss time(local - midnight);

    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%04d-%02u-%02uT%02d:%02d:%02d", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    std::string text = buffer;
    if (timestamp.fractionDigits > 0) {
        std::snprintf(buffer, sizeof buffer, ".%09d", static_cast<int>(time.subseconds().count()));
        text.append(buffer, timestamp.fractionDigits + std::size_t{1});
    }
    if (!timestamp.offsetMinutes)
        return text + 'Z';
    const int offset = *timestamp.offsetMinutes;
    const bool west = offset < 0 || timestamp.negativeZeroOffset;
    std::snprintf(buffer, sizeof buffer, "%c%02d:%02d", west ? '-' : '+', (west ? -offset : offset) / 60,
                  (west ? -offset : offset) % 60);
    return text + buffer;
}

} // namespace burnwick
