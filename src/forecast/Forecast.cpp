// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forecast/Forecast.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace burnwick {

namespace {

// All times are in seconds since the window's start.
constexpr double never = std::numeric_limits<double>::infinity();
constexpr double hour = 3600;
constexpr double day = 24 * hour;
constexpr double shortestMeasurement = hour / 6;
/// A break of an hour rarely ends within the rest of a 5-hour window.
constexpr double quietAfter = hour;
constexpr double endedAfterQuiet = 0.4;
/// Half of the work ends within five hours: 5 h / ln 2.
constexpr double workLasts = 7 * hour;
/// In windows of several days, the pace of the next 24 hours relative to that of all days: a user who asks
/// is at work, mostly on five days of seven.
constexpr double firstDay = 1.4;
/// Whole percents hide up to one.
constexpr double hiddenPercent = 1;
/// Of the Weibull distribution: between 1, where the end of the work does not depend on the past pace, and 2,
/// at which users keep their pace. The band of 10 to 90 % then runs from a fifth to twice the mean.
constexpr double shape = 1.4;

struct Point {
    double at = 0;
    double amount = 0; ///< percent of a sample, weight of tokens
    auto operator<=>(const Point &) const = default;
};

double secondsBetween(Instant from, Instant to) {
    return (from <= to ? static_cast<double>(nanosecondsBetween(from, to))
                       : -static_cast<double>(nanosecondsBetween(to, from))) /
           1e9;
}

/// The usable ones of samples or tokens, in order of time.
template <typename T>
std::vector<Point> pointsWithin(std::span<const T> values, double T::*amount, Instant resetsAt, double length,
                                double now) {
    std::vector<Point> points;
    points.reserve(values.size());
    for (const T &value : values) {
        const Point point{length - secondsBetween(value.at, resetsAt), value.*amount};
        if (point.at >= 0 && point.at <= now && point.amount >= 0 && point.amount < never)
            points.push_back(point);
    }
    if (!std::is_sorted(points.begin(), points.end()))
        std::sort(points.begin(), points.end());
    return points;
}

/// What the samples of the present window show.
struct Measured {
    double origin = 0;          ///< since when the percent has risen from 0
    std::vector<Point> samples; ///< never falling

    explicit Measured(std::vector<Point> sorted)
        : samples(std::move(sorted)) {
        const auto peak =
            std::max_element(samples.begin(), samples.end(),
                             [](const Point &a, const Point &b) { return a.amount < b.amount; });
        if (peak != samples.end() && isEarlyReset(peak->amount, samples.back().amount)) {
            origin = peak->at;
            samples.erase(samples.begin(), peak + 1);
        }
        for (std::size_t index = 1; index < samples.size(); ++index)
            samples[index].amount = std::max(samples[index].amount, samples[index - 1].amount);
    }

    [[nodiscard]] const Point &last() const { return samples.back(); }
    /// Returns the first sample with at least that percent, or end().
    [[nodiscard]] auto firstWith(double percent) const {
        return std::partition_point(samples.begin(), samples.end(),
                                    [percent](const Point &sample) { return sample.amount < percent; });
    }
    /// Returns the last sample before the percent rose above this one, or the origin.
    [[nodiscard]] Point lastUpTo(double percent) const {
        const auto above = firstWith(std::nextafter(percent, never));
        return above == samples.begin() ? Point{origin, 0} : *(above - 1);
    }
};

/// Limits weights to 50 times the median; the answers that one user gets differ less.
void limitWeights(std::vector<Point> &tokens) {
    if (tokens.empty())
        return;
    std::vector<double> weights;
    weights.reserve(tokens.size());
    for (const Point &token : tokens)
        weights.push_back(token.amount);
    const auto median = weights.begin() + static_cast<std::ptrdiff_t>((weights.size() - 1) / 2);
    std::nth_element(weights.begin(), median, weights.end());
    for (Point &token : tokens)
        token.amount = std::min(token.amount, 50 * *median);
}

/// Returns the percent used since the last sample. The rate is that of the last ten percent: the rounding of
/// the samples distorts them by a tenth at most, and models, and with them the rate, change within a window.
/// Assumes no more use than the rate was learned from, because other use than that of these logs can distort
/// it.
double percentSince(const Measured &measured, const std::vector<Point> &tokens) {
    const Point begin = measured.lastUpTo(std::max(0.0, measured.last().amount - 10));
    double before = 0, since = 0;
    for (const Point &token : tokens) {
        if (token.at > measured.last().at)
            since += token.amount;
        else if (token.at > begin.at)
            before += token.amount;
    }
    return before > 0 ? (measured.last().amount - begin.amount) * std::min(1.0, since / before) : 0;
}

/// The distribution of the future use until the reset.
class Outlook {
public:
    /// `used` is the present percent, `elapsed` the time since the first use, `idle` that since the last.
    Outlook(bool withinDay, double used, double elapsed, double idle)
        : m_withinDay(withinDay)
        , m_ended(withinDay ? endedAfterQuiet * idle / quietAfter : 0)
        , m_pace((used + hiddenPercent) / std::max(elapsed, withinDay ? shortestMeasurement : day)) {}

    /// The use within this time that is not exceeded with that probability.
    [[nodiscard]] double use(double probability, double time) const {
        return paceAt(probability) * (m_withinDay ? workLasts * -std::expm1(-time / workLasts)
                                                  : time + (firstDay - 1) * std::min(time, day));
    }
    /// The inverse: the time until that use, which is above 0.
    [[nodiscard]] double timeUntil(double use, double probability) const {
        const double paced = use / paceAt(probability); // infinite if the pace is 0
        if (m_withinDay)
            return paced < workLasts ? workLasts * -std::log1p(-paced / workLasts) : never;
        return std::max(paced / firstDay, paced - (firstDay - 1) * day);
    }

private:
    [[nodiscard]] double paceAt(double probability) const {
        const double exponent = std::log((1 - m_ended) / (1 - probability));
        return m_pace * std::pow(std::max(0.0, exponent), 1 / shape) / std::tgamma(1 + 1 / shape);
    }

    bool m_withinDay;
    double m_ended; ///< the probability that no use follows
    double m_pace;  ///< percent a second
};

} // namespace

Forecast forecastLimit(const LimitWindow &window, std::span<const LimitSample> allSamples,
                       std::span<const TokenUse> allTokens, Instant instant) {
    using State = Forecast::State;
    const double length = std::chrono::duration<double>(window.length).count();
    const double left = secondsBetween(instant, window.resetsAt);
    const double now = length - left;
    const auto instantOf = [&](double time) {
        return window.resetsAt - std::chrono::nanoseconds(std::llround((length - time) * 1e9));
    };
    const double end = std::min(now, length);
    const Measured measured(pointsWithin(allSamples, &LimitSample::percent, window.resetsAt, length, end));
    std::vector<Point> tokens = pointsWithin(allTokens, &TokenUse::weight, window.resetsAt, length, end);
    std::erase_if(tokens,
                  [&](const Point &token) { return token.amount <= 0 || token.at < measured.origin; });
    limitWeights(tokens);

    Forecast forecast;
    forecast.state = left <= 0 ? State::waiting : State::collecting;
    if (measured.samples.empty())
        return forecast;
    forecast.measuredAt = instantOf(measured.last().at);
    forecast.rawPercent = measured.last().amount + percentSince(measured, tokens);
    forecast.percent = std::min(forecast.rawPercent, 100.0);
    if (forecast.state == State::waiting)
        return forecast;
    if (const auto full = measured.firstWith(100); full != measured.samples.end()) {
        forecast.state = State::full;
        forecast.atReset = {100, 100, 100};
        forecast.fullAt = forecast.earliestFullAt = instantOf(full->at);
        return forecast;
    }
    if (now - measured.last().at > std::chrono::duration<double>(window.staleAfter).count()) {
        forecast.state = State::stale;
        return forecast;
    }
    if (measured.samples.size() < 2 || now - measured.samples.front().at < shortestMeasurement)
        return forecast;

    double firstUse = tokens.empty() ? measured.origin : tokens.front().at;
    double lastUse = tokens.empty() ? measured.origin : tokens.back().at;
    if (measured.last().amount > 0) {
        firstUse = tokens.empty() ? measured.lastUpTo(0).at : std::min(firstUse, measured.lastUpTo(0).at);
        lastUse = std::max(lastUse, measured.firstWith(measured.last().amount)->at);
    }
    const double idle = now - lastUse;
    if (idle >= quietAfter && length < day) {
        forecast.state = State::quiet;
        forecast.atReset = {forecast.percent, forecast.percent, forecast.percent};
        return forecast;
    }
    const Outlook outlook(length < day, forecast.rawPercent, now - firstUse, idle);
    const auto atReset = [&](double probability) {
        return std::min(100.0, forecast.percent + outlook.use(probability, left));
    };
    const auto reachesFull = [&](double probability) -> std::optional<Instant> {
        const double missing = 100 - forecast.rawPercent;
        const double time = missing > 0 ? outlook.timeUntil(missing, probability) : 0;
        return time <= left ? std::optional(instantOf(now + time)) : std::nullopt;
    };
    forecast.state = State::expected;
    forecast.atReset = {atReset(0.1), atReset(0.5), atReset(0.9)};
    forecast.fullAt = reachesFull(0.5);
    forecast.earliestFullAt = reachesFull(0.9);
    return forecast;
}

Forecast forecastOf(const LimitCourse &course, Instant now) {
    const Limit &limit = course.limit;
    if (!limit.resetsAt || !isPlausibleReset(*limit.resetsAt, limit.kind, now))
        return {};
    return forecastLimit({*limit.resetsAt, windowLengthOf(limit.kind), staleLimitAge}, course.samples,
                         course.tokens, now);
}

} // namespace burnwick
