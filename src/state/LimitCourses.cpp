// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "state/LimitCourses.h"

#include "model/Cost.h"
#include "model/QuotaWindow.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <unordered_map>

namespace burnwick {

namespace {

using std::chrono::minutes;

/// The use of older entries is dropped once it is that old, at the price of computing all anew.
constexpr std::chrono::nanoseconds longestKept = std::chrono::hours(7 * 24);

bool isLetter(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) != 0;
}
bool isDigit(char c) {
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}
char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string lowered(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char c) { return lowered(c); });
    return result;
}

std::uint64_t countOf(std::chrono::nanoseconds time) {
    return static_cast<std::uint64_t>(time.count());
}

Instant windowStart(Instant resetsAt, std::chrono::nanoseconds length) {
    return resetsAt < Instant::min() + length ? Instant::min() : resetsAt - length;
}

} // namespace

bool coversModel(std::string_view limitName, std::string_view model) {
    const std::string name = lowered(limitName);
    const std::string modelName = lowered(model);
    const auto isWordPart = [](char c) { return isLetter(c) || isDigit(c); };
    for (auto begin = name.begin(); begin != name.end();) {
        begin = std::find_if(begin, name.end(), isWordPart);
        const auto end = std::find_if_not(begin, name.end(), isWordPart);
        const std::string word(begin, end);
        if (!word.empty() && word != "claude" && std::ranges::all_of(word, isLetter) &&
            modelName.find(word) != std::string::npos)
            return true;
        begin = end;
    }
    return false;
}

struct RecentUse::ListUse {
    struct Minute {
        std::chrono::time_point<std::chrono::system_clock, minutes> minute;
        InternedString model;
        TokenUse use; ///< at the last entry's time
    };

    ListUse(LogEntries list, Instant since)
        : entries(std::move(list)) {
        for (const JSONLEntry &entry : *entries) {
            const auto instant = entry.timestamp();
            if (!instant || *instant <= since || !entry.isUsageLine())
                continue;
            const double weight = sessionCost(entry.counts());
            if (!(weight > 0))
                continue;
            const auto minute = std::chrono::floor<minutes>(*instant);
            if (uses.empty() || uses.back().minute != minute || uses.back().model != entry.model()) {
                uses.push_back({minute, entry.model(), {*instant, weight}});
                continue;
            }
            TokenUse &use = uses.back().use;
            use.at = std::max(use.at, *instant);
            use.weight += weight;
        }
        uses.shrink_to_fit();
    }

    LogEntries entries;
    std::vector<Minute> uses; ///< in the order of the entries; a minute may come several times
};

RecentUse::RecentUse(const LogHistory &history, Instant since, const RecentUse *last)
    : m_since(since) {
    std::unordered_map<LogEntries, std::shared_ptr<const ListUse>> known;
    if (last != nullptr && last->m_since <= since &&
        nanosecondsBetween(last->m_since, since) <= countOf(longestKept)) {
        m_since = last->m_since;
        for (const auto &list : last->m_lists)
            known.emplace(list->entries, list);
    }
    const auto add = [&](const LogEntries &entries) {
        if (entries == nullptr)
            return;
        const auto found = known.find(entries);
        m_lists.push_back(found != known.end() ? found->second
                                               : std::make_shared<const ListUse>(entries, m_since));
    };
    std::ranges::for_each(history.entriesSince(m_since), add);
    // A log may be deleted on the day of its lines, and others may be imported.
    std::ranges::for_each(history.kept, add);
}

std::vector<TokenUse> RecentUse::within(const Limit &limit, Instant lastSample) const {
    const std::chrono::nanoseconds length = windowLengthOf(limit.kind);
    const minutes binLength = limit.kind == Limit::Kind::session ? minutes(1) : minutes(15);
    std::unordered_map<InternedString, bool> models;
    const auto isCovered = [&](InternedString model) {
        if (limit.kind != Limit::Kind::weeklyScoped)
            return true;
        const auto [known, isNew] = models.try_emplace(model);
        if (isNew)
            known->second = coversModel(limit.model, model.view());
        return known->second;
    };
    std::vector<TokenUse> bins(static_cast<std::size_t>(length / binLength));
    std::unordered_map<std::int64_t, TokenUse> late;
    for (const auto &list : m_lists) {
        for (const ListUse::Minute &minute : list->uses) {
            const Instant at = minute.use.at;
            if (!isInWindow(at, *limit.resetsAt, length) || !isCovered(minute.model))
                continue;
            const std::uint64_t elapsed = countOf(length) - nanosecondsBetween(at, *limit.resetsAt);
            TokenUse &bin = at > lastSample
                                ? late[minute.minute.time_since_epoch().count()]
                                : bins[std::min<std::size_t>(elapsed / countOf(binLength), bins.size() - 1)];
            bin.at = bin.weight > 0 ? std::max(bin.at, at) : at;
            bin.weight += minute.use.weight;
        }
    }
    std::erase_if(bins, [](const TokenUse &bin) { return bin.weight <= 0; });
    for (const auto &[minute, use] : late)
        bins.push_back(use);
    std::ranges::sort(bins, {}, &TokenUse::at);
    return bins;
}

std::vector<LimitCourse> coursesOf(std::span<const Limit> limits,
                                   std::optional<std::vector<std::vector<LimitSample>>> recorded,
                                   std::span<const LimitCourse> former) {
    std::vector<LimitCourse> courses;
    for (const Limit &limit : limits) {
        LimitCourse &course = courses.emplace_back(LimitCourse{limit});
        if (recorded && recorded->size() == limits.size()) {
            course.samples = std::move((*recorded)[courses.size() - 1]);
            continue;
        }
        const auto known = std::ranges::find_if(former, [&limit](const LimitCourse &other) {
            return isSameLimit(other.limit, limit) && isInItsWindow(other.limit) && isInItsWindow(limit) &&
                   isSameQuotaWindow(*other.limit.resetsAt, *limit.resetsAt);
        });
        if (known != former.end())
            course.samples = known->samples;
        std::erase_if(course.samples,
                      [&limit](const LimitSample &sample) { return sample.at > limit.observedAt; });
        addSample(course.samples, {limit.observedAt, limit.usedPct});
    }
    return courses;
}

std::shared_ptr<const RecentUse> addTokens(std::vector<LimitCourse> &courses, const LogHistory &history,
                                           const RecentUse *last) {
    std::optional<Instant> since;
    for (LimitCourse &course : courses) {
        course.tokens.clear();
        if (isInItsWindow(course.limit))
            since = std::min(since.value_or(Instant::max()),
                             windowStart(*course.limit.resetsAt, windowLengthOf(course.limit.kind)));
    }
    if (!since)
        return nullptr;
    auto use = std::make_shared<const RecentUse>(history, *since, last);
    for (LimitCourse &course : courses) {
        if (isInItsWindow(course.limit))
            course.tokens = use->within(course.limit, course.samples.back().at);
    }
    return use;
}

} // namespace burnwick
