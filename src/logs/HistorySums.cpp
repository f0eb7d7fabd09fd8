// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/HistorySums.h"

#include "logs/HistoryBuilder.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace burnwick {

struct HistorySums::FileSums {
    FileSums(LogEntries list, const Calendar &calendar)
        : entries(std::move(list))
        , sums(calendar) {
        for (const JSONLEntry &entry : *entries) {
            sums.add(entry);
            if (sessions.empty() || sessions.back() != entry.sessionId())
                sessions.push_back(entry.sessionId());
            const auto instant = entry.timestamp();
            areAllDated &= instant.has_value();
            first = std::min(first, instant.value_or(Instant::max()));
            last = std::max(last, instant.value_or(Instant::min()));
        }
    }

    LogEntries entries;
    HistoryBuilder sums;
    std::vector<InternedString> sessions; ///< perhaps repeated
    Instant first = Instant::max();
    Instant last = Instant::min();
    bool areAllDated = true;
};

namespace {

/// Returns the number of log files plus that of sessions without a log file.
std::size_t sessionCountOf(const LogHistory &history) {
    std::set<std::string_view> kept;
    for (const LogEntries &entries : history.kept)
        kept.insert(entries->front().sessionId().view());
    for (const LogFile &file : history.files) {
        if (kept.empty())
            break;
        kept.erase(file.path.stem().native());
    }
    return history.files.size() + kept.size();
}

} // namespace

HistorySums::HistorySums(const LogHistory &history, const Calendar &calendar, const HistorySums *last)
    : m_calendar(calendar)
    , m_sessionCount(sessionCountOf(history)) {
    std::unordered_map<LogEntries, std::shared_ptr<const FileSums>> known;
    if (last != nullptr && last->m_calendar == calendar) {
        for (const auto &file : last->m_files) {
            if (file != nullptr)
                known.emplace(file->entries, file);
        }
    }
    m_files.reserve(history.entries.size() + history.kept.size());
    const auto add = [&](const LogEntries &entries) {
        const auto found = known.find(entries);
        if (found != known.end())
            m_files.push_back(found->second);
        else
            m_files.push_back(entries != nullptr ? std::make_shared<const FileSums>(entries, calendar)
                                                 : nullptr);
    };
    std::ranges::for_each(history.entries, add);
    std::ranges::for_each(history.kept, add);
}

HistoricalData HistorySums::within(TimeFilter filter, Instant now) const {
    const auto cutOff = cutOffOf(filter, now, m_calendar);
    HistoryBuilder builder(m_calendar);
    std::unordered_set<InternedString> sessions;
    for (const auto &file : m_files) {
        if (file == nullptr || (cutOff && file->last < *cutOff))
            continue;
        if (!cutOff || (file->areAllDated && file->first >= *cutOff)) {
            builder.add(file->sums);
            sessions.insert(file->sessions.begin(), file->sessions.end());
            continue;
        }
        for (const JSONLEntry &entry : *file->entries) {
            const auto instant = entry.timestamp();
            if (!instant || *instant < *cutOff)
                continue;
            sessions.insert(entry.sessionId());
            builder.add(entry);
        }
    }
    const std::size_t sessionCount = cutOff ? sessions.size() : m_sessionCount;
    return builder.finish(static_cast<std::int64_t>(sessionCount), m_calendar.dayOf(now));
}

} // namespace burnwick
