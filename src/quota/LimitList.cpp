// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/LimitList.h"

#include <algorithm>
#include <cmath>

namespace burnwick {

namespace {

using Kind = Limit::Kind;

constexpr std::ptrdiff_t mostScoped = 20;

int rankOf(const Limit &limit) {
    return 2 * static_cast<int>(limit.kind) +
           static_cast<int>(limit.kind == Kind::weeklyScoped && limit.model != claudeDesign);
}

} // namespace

std::vector<Limit> distinctLimits(std::vector<Limit> limits) {
    std::vector<Limit> distinct;
    std::ptrdiff_t scoped = 0;
    for (Limit &limit : limits) {
        const auto isSame = [&limit](const Limit &other) { return isSameLimit(limit, other); };
        if (!std::isfinite(limit.usedPct) || std::ranges::any_of(distinct, isSame))
            continue;
        if (limit.kind == Kind::weeklyScoped && ++scoped > mostScoped)
            continue;
        limit.usedPct = std::max(0.0, limit.usedPct);
        distinct.push_back(std::move(limit));
    }
    std::ranges::stable_sort(distinct, {}, rankOf);
    return distinct;
}

void copyToQuota(const Limit &limit, QuotaData &quota) {
    if (limit.kind == Kind::session) {
        quota.fiveHourUsagePct = limit.usedPct;
        quota.fiveHourResetAt = limit.resetsAt;
    } else if (limit.kind == Kind::weekly) {
        quota.sevenDayUsagePct = limit.usedPct;
        quota.sevenDayResetAt = limit.resetsAt;
    } else if (limit.model == claudeDesign) {
        quota.claudeDesignWeeklyPct = limit.usedPct;
        quota.claudeDesignResetAt = limit.resetsAt;
    }
}

bool isInPresentWindow(const Limit &limit, Instant now) {
    return limit.resetsAt && *limit.resetsAt > now && isPlausibleReset(*limit.resetsAt, limit.kind, now);
}

} // namespace burnwick
