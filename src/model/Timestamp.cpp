// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/Timestamp.h"

#include <date/date.h>

#include <algorithm>
#include <limits>
#include <locale>

namespace burnwick {

namespace {

constexpr std::size_t maxFractionDigits = 9;

/// Consumes the fields of a text. After the first mismatch isComplete() returns false.
class Reader {
public:
    explicit Reader(std::string_view text) noexcept
        : m_text(text) {}

    int number(std::size_t digits, int largest = std::numeric_limits<int>::max()) noexcept {
        int value = 0;
        for (; digits > 0; --digits) {
            const char c = m_text.empty() ? '\0' : m_text.front();
            if (c < '0' || c > '9') {
                m_failed = true;
                return 0;
            }
            value = value * 10 + (c - '0');
            m_text.remove_prefix(1);
        }
        m_failed = m_failed || value > largest;
        return value;
    }
    bool accept(char c) noexcept {
        if (!m_text.starts_with(c))
            return false;
        m_text.remove_prefix(1);
        return true;
    }
    void expect(char c) noexcept { m_failed = !accept(c) || m_failed; }

    [[nodiscard]] std::size_t countDigits() const noexcept {
        return std::min(m_text.find_first_not_of("0123456789"), m_text.size());
    }
    [[nodiscard]] bool isComplete() const noexcept { return !m_failed && m_text.empty(); }

private:
    std::string_view m_text;
    bool m_failed = false;
};

} // namespace

std::optional<Instant> parseTimestamp(std::string_view text) noexcept {
    using namespace std::chrono;
    // Whole years that fit into 64 bits of nanoseconds.
    constexpr year firstYear(1678);
    constexpr year lastYear(2261);

    Reader in(text);
    const year inYear(in.number(4));
    in.expect('-');
    const month inMonth(static_cast<unsigned>(in.number(2)));
    in.expect('-');
    const year_month_day date(inYear, inMonth, day(static_cast<unsigned>(in.number(2))));
    in.expect('T');
    const hours hour(in.number(2, 23));
    in.expect(':');
    const minutes minute(in.number(2, 59));
    in.expect(':');
    const seconds second(in.number(2, 59));

    nanoseconds fraction{0};
    if (in.accept('.')) {
        const std::size_t digits = in.countDigits();
        if (digits == 0 || digits > maxFractionDigits)
            return std::nullopt;
        fraction = nanoseconds(in.number(digits));
        for (auto i = digits; i < maxFractionDigits; ++i)
            fraction *= 10;
    }
    minutes offset{0}; // east of UTC
    if (!in.accept('Z')) {
        const bool isWest = in.accept('-');
        if (!isWest)
            in.expect('+');
        offset = hours(in.number(2, 23));
        in.expect(':');
        offset += minutes(in.number(2, 59));
        offset = isWest ? -offset : offset;
    }
    if (!in.isComplete() || !date.ok() || inYear < firstYear || inYear > lastYear)
        return std::nullopt;
    return sys_days(date) + hour + minute + second + fraction - offset;
}

std::optional<Instant> parseLogInstant(std::string_view text) noexcept {
    return text.find('.') == std::string_view::npos ? std::nullopt : parseTimestamp(text);
}

std::string printTimestamp(Instant instant, std::size_t fractionDigits) {
    // "2025-01-15T10:30:45.123456789"
    const std::string text = date::format(std::locale::classic(), "%FT%T", instant);
    const std::size_t cutOff = maxFractionDigits - fractionDigits + (fractionDigits == 0 ? 1 : 0);
    return text.substr(0, text.size() - cutOff) + 'Z';
}

} // namespace burnwick
