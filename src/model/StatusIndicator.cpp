// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/StatusIndicator.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace burnwick {

std::string hexOf(const RgbColor &color) {
    const auto component = [](double value) { return static_cast<unsigned>(std::lround(value * 255)); };
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x", component(color.red), component(color.green),
                  component(color.blue));
    return text.data();
}

StatusIndicator statusIndicatorForUsage(double usagePct) noexcept {
    constexpr double redFromPct = 81.0;
    constexpr double orangeFromPct = 41.0;
    if (usagePct >= redFromPct)
        return StatusIndicator::red;
    if (usagePct >= orangeFromPct)
        return StatusIndicator::orange;
    return StatusIndicator::green;
}

StatusIndicator statusIndicatorFor(const std::optional<QuotaData> &quota) noexcept {
    return quota ? statusIndicatorForUsage(quota->fiveHourUsagePct) : StatusIndicator::green;
}

RgbColor colorOf(StatusIndicator indicator) noexcept {
    switch (indicator) {
    case StatusIndicator::orange:
        return {0.99, 0.74, 0.18};
    case StatusIndicator::red:
        return {1.0, 0.27, 0.23};
    case StatusIndicator::green:
        break;
    }
    return {0.2, 0.78, 0.35};
}

std::string_view nameOf(StatusIndicator indicator) noexcept {
    switch (indicator) {
    case StatusIndicator::orange:
        return "orange";
    case StatusIndicator::red:
        return "red";
    case StatusIndicator::green:
        break;
    }
    return "green";
}

} // namespace burnwick
