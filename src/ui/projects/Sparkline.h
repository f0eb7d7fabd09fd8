// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/TimeFilter.h"

#include <QRectF>

#include <cstdint>
#include <span>
#include <vector>

namespace burnwick {

/// A sparkline's days and widths, in logical pixels.
struct SparklineMeasures {
    int days; ///< today and the days before
    int bar;
    int gap; ///< between bars
};

/// Returns the measures of the filter's period, or of its last 62 days.
[[nodiscard]] SparklineMeasures sparklineMeasures(TimeFilter filter);

/// Returns the bar of each count, from left to right, on the area's lower edge. The highest is as high as the
/// area; a count above 0 is at least a pixel high, others are not.
[[nodiscard]] std::vector<QRectF> layoutSparkline(std::span<const std::int64_t> counts,
                                                  const SparklineMeasures &measures, const QRectF &area);

} // namespace burnwick
