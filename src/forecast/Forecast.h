// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Limit.h"

#include <optional>
#include <span>

namespace burnwick {

/// The present window of a limit.
struct LimitWindow {
    Instant resetsAt;
    std::chrono::nanoseconds length{0};
    std::chrono::nanoseconds staleAfter{0}; ///< the age above which a sample is too old for a forecast
};

/// The forecast of a limit's use at its reset, or the reason for its absence.
struct Forecast {
    enum class State {
        collecting, ///< under ten minutes of samples in this window, or fewer than two
        stale,      ///< the last sample is too old
        waiting,    ///< the reset is over; there is no sample of the new window yet
        quiet,      ///< unused for an hour; expected to stay so. Only in windows of less than a day
        full,       ///< a sample has 100 % or more
        expected,   ///< otherwise; `atReset` is a true range
    };
    /// Percent of the limit, from the present percent to 100. The truth is in the band in about four of five
    /// cases.
    struct Range {
        double low = 0;
        double middle = 0; ///< as often too low as too high
        double high = 0;
    };

    State state = State::collecting;
    std::optional<Instant> measuredAt{}; ///< of the last sample in this window
    double rawPercent = 0;               ///< at present: the last sample and the use since; may exceed 100
    double percent = 0;                  ///< the same, at most 100
    std::optional<Range> atReset{};      ///< when quiet, full or expected
    /// The instant at which the middle reaches 100; when full, that of the first sample with 100 %. Null if
    /// it does not before the reset.
    std::optional<Instant> fullAt{};
    std::optional<Instant> earliestFullAt{}; ///< the same for the upper end of the band
};

/// Returns the forecast. The use is expected to continue at its average pace since the window's first use; in
/// windows of less than a day the pace halves within five hours, as people stop working, and in longer ones
/// the next day has 1.4 times the pace, as people who ask are at work. Around that mean it has a Weibull
/// distribution of shape 1.4, whose 10, 50 and 90 % quantiles are the range. In windows of less than a day,
/// each minute without use makes it more probable that no use follows: 40 % after an hour.
///
/// Samples and tokens may be in any order; those outside the window or after `now` are ignored. The present
/// percent counts the tokens since the last sample, at the rate that the samples show. Pure; takes linear
/// time if both are in order.
[[nodiscard]] Forecast forecastLimit(const LimitWindow &window, std::span<const LimitSample> samples,
                                     std::span<const TokenUse> tokens, Instant now);

/// Returns whether a percent after the peak shows that the service has reset the limit early: less than half
/// of it. A smaller fall is an old figure that arrived late.
[[nodiscard]] constexpr bool isEarlyReset(double peak, double last) noexcept {
    return last < peak / 2;
}

/// The time after which a sample is too old for a forecast: two refreshes of the quota.
inline constexpr std::chrono::minutes staleLimitAge{10};

/// Returns the forecast of the course's window. Without a plausible reset (see
/// isPlausibleReset()) the state is `collecting`.
[[nodiscard]] Forecast forecastOf(const LimitCourse &course, Instant now);

} // namespace burnwick
