// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
//
// burnwick-bench-forecast [SEED...]: compares forecasts of simulated windows with the truth.
#include "ResultTable.h"
#include "UsageSimulation.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <string>
#include <vector>

using namespace burnwick;
using namespace burnwick::bench;

namespace {

constexpr std::uint64_t usualSeed = 1;

double hoursIn(std::chrono::nanoseconds time) {
    return std::chrono::duration<double, std::ratio<3600>>(time).count();
}

/// The errors at one point of the window, added up.
struct Errors {
    double forecast = 0, windowLine = 0, hourLine = 0; ///< of the percent at the reset
    double lastSample = 0, present = 0;                ///< of the present percent
    int count = 0;
    int bands = 0, missed = 0;
};

/// Returns the percent at the reset at the pace since `from`, by the samples and the present percent.
double line(const SimulatedWindow &user, const std::vector<LimitSample> &samples, double present,
            Instant from, Instant now) {
    LimitSample before{user.start, 0};
    double used = 0;
    for (const LimitSample &sample : samples) {
        if (before.at >= from)
            break;
        const double part = hoursIn(from - before.at) / hoursIn(sample.at - before.at);
        used = before.percent + (sample.percent - before.percent) * std::min(part, 1.0);
        before = sample;
    }
    const double hours = hoursIn(now - from);
    return std::min(100.0, present + (present - used) / hours * hoursIn(user.window.resetsAt - now));
}

/// Asks at the point, or at the next sample soon after it if the machine is asleep.
void addErrors(const SimulatedWindow &user, double point, Errors &errors) {
    const auto part = [&](double fraction) {
        return std::chrono::nanoseconds(
            std::llround(fraction * static_cast<double>(user.window.length.count())));
    };
    const auto next = std::find_if(user.samples.begin(), user.samples.end(), [&](const LimitSample &sample) {
        return sample.at > user.start + part(point) - user.window.staleAfter;
    });
    if (next == user.samples.end() || next->at > user.start + part(point + 0.1))
        return;
    const Instant now = std::max(user.start + part(point), next->at);
    std::vector<LimitSample> samples;
    std::vector<TokenUse> tokens;
    const auto known = [now](const auto &value) { return value.at <= now; };
    std::copy_if(user.samples.begin(), user.samples.end(), std::back_inserter(samples), known);
    std::copy_if(user.tokens.begin(), user.tokens.end(), std::back_inserter(tokens), known);
    const Forecast forecast = forecastLimit(user.window, samples, tokens, now);
    if (!forecast.atReset || forecast.state == Forecast::State::full)
        return;

    const double truth = user.percentAt(user.window.resetsAt);
    const Forecast::Range &range = *forecast.atReset;
    errors.forecast += std::abs(range.middle - truth);
    errors.windowLine += std::abs(line(user, samples, forecast.percent, user.start, now) - truth);
    const Instant hourAgo = std::max(user.start, now - std::chrono::hours(1));
    errors.hourLine += std::abs(line(user, samples, forecast.percent, hourAgo, now) - truth);
    errors.lastSample += std::abs(samples.back().percent - user.percentAt(now));
    errors.present += std::abs(forecast.percent - user.percentAt(now));
    ++errors.count;
    if (forecast.state == Forecast::State::expected) { // quiet limits have no band
        ++errors.bands;
        errors.missed +=
            std::round(truth) < std::round(range.low) || std::round(truth) > std::round(range.high);
    }
}

void measure(const std::string &name, const std::vector<SimulatedWindow> &users, ResultTable &table) {
    Errors all;
    for (const int point : {20, 40, 60, 80}) {
        Errors errors;
        for (const SimulatedWindow &user : users)
            addErrors(user, point / 100.0, errors);
        const double count = std::max(1, errors.count);
        const double bands = std::max(1, errors.bands);
        const std::string at = name + ", " + std::to_string(point) + " %: ";
        table.addFigure(at + "forecasts", errors.count, "", 0);
        table.addFigure(at + "error, line of the window", errors.windowLine / count, "points", 1);
        table.addFigure(at + "error, line of the last hour", errors.hourLine / count, "points", 1);
        table.addAtMost(at + "error of the forecast", errors.forecast / count,
                        std::min(errors.windowLine, errors.hourLine) / count, "points", 1);
        table.addFigure(at + "truth in the band", 100 - 100 * errors.missed / bands, "%", 0);
        all.lastSample += errors.lastSample;
        all.present += errors.present;
        all.count += errors.count;
        all.bands += errors.bands;
        all.missed += errors.missed;
    }
    table.addAtLeast(name + ": truth in the band", 100 - 100.0 * all.missed / all.bands, 80, "%", 0);
    table.addFigure(name + ": error of the last sample now", all.lastSample / all.count, "points", 2);
    table.addFigure(name + ": error of the present percent", all.present / all.count, "points", 2);
}

} // namespace

int main(int argc, char **argv) {
    ResultTable table;
    std::vector<std::uint64_t> seeds;
    for (int index = 1; index < argc; ++index)
        seeds.push_back(std::strtoull(argv[index], nullptr, 10));
    if (seeds.empty())
        seeds.push_back(usualSeed);
    for (const std::uint64_t seed : seeds) {
        const std::string suffix = seed == usualSeed ? "" : ", seed " + std::to_string(seed);
        // The differences are smaller for seven days, and need more windows.
        measure("5 h" + suffix, simulateWindows(WindowLength::fiveHours, seed, 500), table);
        measure("7 d" + suffix, simulateWindows(WindowLength::sevenDays, seed, 800), table);
    }
    return table.anyMissed() ? EXIT_FAILURE : EXIT_SUCCESS;
}
