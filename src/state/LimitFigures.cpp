// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "state/LimitFigures.h"

#include "quota/LimitList.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace burnwick {

namespace {

/// An answer has all the fields of the quota, but the status line may have observed other limits, or later.
void copyObservationsToQuota(AccountFigures &figures) {
    for (const Limit &limit : figures.limits) {
        if (limit.source == Limit::Source::statusLine)
            copyToQuota(limit, *figures.quotaData);
    }
}

/// A status line may repeat figures that its session received long ago.
bool isOutdated(const Limit &observed, const Limit &known, Instant now) {
    return observed.observedAt < known.observedAt ||
           (observed.resetsAt && *observed.resetsAt <= now && isInPresentWindow(known, now));
}

} // namespace

void takeAnswer(AccountFigures &figures, const OAuthFetcher::Usage &answer, Instant now) {
    std::vector<Limit> limits = answer.limits;
    std::ranges::copy_if(figures.limits, std::back_inserter(limits), [now](const Limit &known) {
        return known.source == Limit::Source::statusLine && isInPresentWindow(known, now);
    });
    figures.limits = distinctLimits(std::move(limits)); // the answer's come first
    figures.quotaData = answer.quota;
    figures.quotaReadAt = now;
    copyObservationsToQuota(figures);
    if (answer.extraUsage) {
        figures.extraUsage = answer.extraUsage;
        figures.extraUsageReadAt = now;
    }
}

bool takeObservations(AccountFigures &figures, std::vector<Limit> observed, Instant now) {
    for (Limit &known : figures.limits)
        known.observedAt = std::min(known.observedAt, now); // the clock was set back
    std::vector<Limit> limits;
    for (Limit &limit : distinctLimits(std::move(observed))) {
        limit.observedAt = std::min(limit.observedAt, now);
        const auto isSame = [&limit](const Limit &known) { return isSameLimit(known, limit); };
        const auto known = std::ranges::find_if(figures.limits, isSame);
        if (known == figures.limits.end() || !isOutdated(limit, *known, now))
            limits.push_back(std::move(limit));
    }
    // The list is ordered.
    const bool hasSession = !limits.empty() && limits.front().kind == Limit::Kind::session;
    const Instant observedAt = hasSession ? limits.front().observedAt : Instant();
    std::ranges::move(figures.limits, std::back_inserter(limits));
    figures.limits = distinctLimits(std::move(limits)); // the observations come first
    if (hasSession) {
        figures.quotaReadAt = observedAt;
        figures.quotaData = figures.quotaData.value_or(QuotaData());
    }
    if (figures.quotaData)
        copyObservationsToQuota(figures);
    return hasSession;
}

} // namespace burnwick
