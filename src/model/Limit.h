// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace burnwick {

/// One of the account's limits, as a source reported it.
struct Limit {
    enum class Kind {
        session,      ///< the 5-hour window
        weekly,       ///< seven days, all models
        weeklyScoped, ///< seven days, one model or product
    };
    enum class Source { endpoint, statusLine };

    Kind kind = Kind::session;
    std::string model{};               ///< the display name of what a scoped limit covers; empty for others
    double usedPct = 0;                ///< finite and at least 0; may exceed 100
    std::optional<Instant> resetsAt{}; ///< null before the window's first use
    Instant observedAt{};              ///< by this machine's clock
    Source source = Source::endpoint;

    bool operator==(const Limit &) const = default;
};

/// Returns whether both are observations of the same limit, perhaps in different windows.
[[nodiscard]] inline bool isSameLimit(const Limit &limit, const Limit &other) {
    return limit.kind == other.kind && limit.model == other.model;
}

/// Returns "session", "weekly" or "weekly_scoped", the kind's name in files and outputs for programs.
[[nodiscard]] constexpr std::string_view nameOf(Limit::Kind kind) noexcept {
    switch (kind) {
    case Limit::Kind::weekly:
        return "weekly";
    case Limit::Kind::weeklyScoped:
        return "weekly_scoped";
    case Limit::Kind::session:
        break;
    }
    return "session";
}

/// Returns the length of the limit's windows.
[[nodiscard]] constexpr std::chrono::hours windowLengthOf(Limit::Kind kind) noexcept {
    return kind == Limit::Kind::session ? std::chrono::hours(5) : std::chrono::hours(7 * 24);
}

/// The use of a limit at an instant, as a source reported it.
struct LimitSample {
    Instant at;
    double percent = 0; ///< may exceed 100

    bool operator==(const LimitSample &) const = default;
};

/// Returns whether the instant is in the window of that length before the reset.
[[nodiscard]] bool isInWindow(Instant instant, Instant resetsAt, std::chrono::nanoseconds length) noexcept;
/// Returns whether the limit was observed in the window that it names; false without a reset instant. False
/// also means that this machine's clock or the reset instant is wrong.
[[nodiscard]] bool isInItsWindow(const Limit &limit) noexcept;

/// Returns whether the reset, which may be over, is at most a window and a day from `now`. A later one is
/// wrong.
[[nodiscard]] bool isPlausibleReset(Instant resetsAt, Limit::Kind kind, Instant now) noexcept;

/// Returns whether samples of the two percents count as unchanged: they differ by less than 0.01.
[[nodiscard]] bool isSamePercent(double percent, double other) noexcept;
/// Adds a sample of the same window. The samples, which must be in order, stay so. They keep one for each
/// change and one for each quarter of an hour without a change; a sample that is neither stays until the next
/// one.
void addSample(std::vector<LimitSample> &samples, const LimitSample &sample);

/// The use that the logs show at an instant: of one answer of a model, or of several ones at about that time.
struct TokenUse {
    Instant at;
    double weight = 0; ///< in any unit that is nearly proportional to the use of the limit, such as dollars

    bool operator==(const TokenUse &) const = default;
};

/// What is known of a limit's present window.
struct LimitCourse {
    Limit limit;                        ///< the latest observation
    std::vector<LimitSample> samples{}; ///< of the window, in order; the last is the latest observation
    std::vector<TokenUse> tokens{};     ///< of the window, in order; empty if no logs show the limit's use

    bool operator==(const LimitCourse &) const = default;
};

} // namespace burnwick
