// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Limit.h"

#include <utility>

namespace burnwick::test {

/// Returns the course of a limit that had these percents at those times after its window's start, with
/// samples at equal distances in between.
inline LimitCourse courseThrough(Limit::Kind kind, Instant resetsAt,
                                 const std::vector<std::pair<std::chrono::minutes, double>> &points,
                                 std::chrono::minutes step = std::chrono::minutes(5)) {
    LimitCourse course;
    course.limit.kind = kind;
    course.limit.resetsAt = resetsAt;
    const Instant start = resetsAt - windowLengthOf(kind);
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        const auto &[from, low] = points[i];
        const auto &[to, high] = points[i + 1];
        for (auto at = from; at < to; at += step)
            course.samples.push_back(
                {start + at, low + (high - low) * static_cast<double>((at - from).count()) /
                                       static_cast<double>((to - from).count())});
    }
    if (!points.empty()) {
        course.samples.push_back({start + points.back().first, points.back().second});
        course.limit.usedPct = course.samples.back().percent;
        course.limit.observedAt = course.samples.back().at;
    }
    return course;
}

} // namespace burnwick::test
