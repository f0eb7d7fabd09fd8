// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/LogHistory.h"
#include "model/Limit.h"

#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace burnwick {

/// Returns whether a limit with that name counts the model: a word of the name, other than "Claude" and
/// numbers, is part of the model's name, whatever the case.
[[nodiscard]] bool coversModel(std::string_view limitName, std::string_view model);

/// The use of a log history since an instant, by minute and model, so that a change of one file costs the
/// entries of that file alone. Never modified once made, so that threads can share it.
class RecentUse {
public:
    /// Shares the use of those lists of entries that `last` also has.
    RecentUse(const LogHistory &history, Instant since, const RecentUse *last = nullptr);

    /// Returns the use of the limit in its window, in dollars and in order: a value a minute since the last
    /// sample, and before that at most 300 or, in windows of seven days, 672 values.
    [[nodiscard]] std::vector<TokenUse> within(const Limit &limit, Instant lastSample) const;

private:
    struct ListUse;

    Instant m_since;
    std::vector<std::shared_ptr<const ListUse>> m_lists;
};

/// Returns the courses of the limits, without tokens. The samples are those that recording the limits
/// returned; if that failed, those of the former course of the same window, and the observation.
[[nodiscard]] std::vector<LimitCourse>
coursesOf(std::span<const Limit> limits, std::optional<std::vector<std::vector<LimitSample>>> recorded,
          std::span<const LimitCourse> former);

/// Sets the courses' tokens. Returns the use that they are from, for the next call; null if no limit was
/// observed in its window.
[[nodiscard]] std::shared_ptr<const RecentUse> addTokens(std::vector<LimitCourse> &courses,
                                                         const LogHistory &history, const RecentUse *last);

} // namespace burnwick
