// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/Limit.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace burnwick {

namespace {

/// Of an unchanged percent.
constexpr std::chrono::minutes sampleInterval{15};

bool isWithin(const LimitSample &first, const LimitSample &second, std::chrono::nanoseconds interval) {
    return nanosecondsBetween(first.at, second.at) < static_cast<std::uint64_t>(interval.count());
}

} // namespace

bool isInWindow(Instant instant, Instant resetsAt, std::chrono::nanoseconds length) noexcept {
    return instant <= resetsAt &&
           nanosecondsBetween(instant, resetsAt) < static_cast<std::uint64_t>(length.count());
}

bool isInItsWindow(const Limit &limit) noexcept {
    return limit.resetsAt && isInWindow(limit.observedAt, *limit.resetsAt, windowLengthOf(limit.kind));
}

bool isPlausibleReset(Instant resetsAt, Limit::Kind kind, Instant now) noexcept {
    return resetsAt <= now || isInWindow(now, resetsAt, windowLengthOf(kind) + std::chrono::hours(24));
}

bool isSamePercent(double percent, double other) noexcept {
    return std::abs(percent - other) < 0.01;
}

void addSample(std::vector<LimitSample> &samples, const LimitSample &sample) {
    const auto next = std::ranges::lower_bound(samples, sample.at, {}, &LimitSample::at);
    if (next != samples.end() && next->at == sample.at) {
        next->percent = sample.percent;
        return;
    }
    if (next - samples.begin() >= 2) {
        LimitSample &last = *(next - 1);
        const LimitSample &before = *(next - 2);
        if (isSamePercent(last.percent, before.percent) && isWithin(before, last, sampleInterval)) {
            last = sample;
            return;
        }
    }
    samples.insert(next, sample);
}

} // namespace burnwick
