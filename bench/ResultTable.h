// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace burnwick::bench {

/// Prints figures as they come, each with its target, and knows whether one was missed.
class ResultTable {
public:
    /// A figure without a target.
    void addFigure(std::string_view what, double figure, std::string_view unit, int digits);
    void addAtMost(std::string_view what, double figure, double target, std::string_view unit, int digits);
    void addAtLeast(std::string_view what, double figure, double target, std::string_view unit, int digits);

    [[nodiscard]] bool anyMissed() const { return m_anyMissed; }

private:
    void addJudged(std::string_view what, const std::string &figure, const std::string &target, bool met);

    bool m_anyMissed = false;
};

} // namespace burnwick::bench
