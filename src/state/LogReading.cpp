// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "state/LogReading.h"

#include "logs/HistoryBuilder.h"
#include "model/Cost.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace burnwick {

namespace {

/// After this time the next change causes a reading of all logs: the unsettled part has grown.
constexpr std::chrono::hours settledFor{48};

/// Takes the entries of the last reading's settled files, and reads the others.
bool readUnsettled(LogReading &reading, const JSONLParser &parser, const LogReading &last,
                   const std::stop_token &stop) {
    auto unsettled = parser.parseUnsettledEntries(last.settled, stop);
    if (!unsettled)
        return false;
    reading.settled = last.settled;
    reading.settledEntries = last.settledEntries;
    reading.unsettledEntries = std::move(unsettled->entries);
    reading.firstRecent = unsettled->firstRecent;
    return true;
}

void readWhole(LogReading &reading, const JSONLParser &parser, const std::stop_token &stop) {
    LogHistory all = parser.parseAllEntries(stop);
    reading.settled = all.settled;
    reading.unsettledEntries.assign(all.entries.begin() + static_cast<std::ptrdiff_t>(all.firstRecent),
                                    all.entries.end());
    all.entries.resize(all.firstRecent);
    all.entries.shrink_to_fit();
    reading.settledEntries = std::make_shared<const LogReading::Entries>(std::move(all.entries));
}

bool areSameFiles(std::span<const LogFile> some, std::span<const LogFile> others) {
    return std::ranges::equal(some, others, [](const LogFile &one, const LogFile &other) {
        return one.size == other.size && one.modified == other.modified &&
               one.path.native() == other.path.native();
    });
}

/// Whether the settled files of the last reading are still the same and still settled, which they are not
/// after the clock was set back.
bool areSettled(std::span<const LogFile> files, const LogReading &last, Instant recentSince, Instant now) {
    const auto count = static_cast<std::size_t>(last.settled.fileCount);
    return recentSince >= last.settled.before && now - last.settled.before < settledFor &&
           files.size() >= count && last.files.size() >= count &&
           areSameFiles(files.first(count), std::span(last.files).first(count));
}

} // namespace

std::shared_ptr<const LogReading> readLogs(const JSONLParser &parser, const Calendar &calendar, Instant now,
                                           const LogReading *last, const std::stop_token &stop) {
    auto reading = std::make_shared<LogReading>();
    // Listed first: a file that changes before it is read differs in the next comparison.
    reading->files = parser.allLogFiles(stop);
    const Instant recentSince = calendar.daysBefore(now, 1);
    reading->recentFileCount =
        static_cast<std::size_t>(std::ranges::count_if(reading->files, [recentSince](const LogFile &file) {
            return file.modified && *file.modified >= recentSince;
        }));
    if (last != nullptr && reading->recentFileCount == last->recentFileCount &&
        areSameFiles(reading->files, last->files))
        return nullptr;
    if (last == nullptr || !areSettled(reading->files, *last, recentSince, now) ||
        !readUnsettled(*reading, parser, *last, stop))
        readWhole(*reading, parser, stop);
    if (stop.stop_requested())
        return nullptr;
    return reading;
}

void updateSession(UsageFigures &figures, std::span<const JSONLEntry> recentEntries, Instant readAt) {
    figures.sessionReadAt = readAt;
    figures.hasJSONLData = !recentEntries.empty();
    figures.sessionTokens = JSONLParser::calculateSessionTokens(recentEntries);
    figures.sessionCost = sessionCost(figures.sessionTokens);
    figures.burnRateTokensPerMin = JSONLParser::calculateBurnRate(recentEntries);
    const ProjectedCosts projected = projectedCosts(figures.burnRateTokensPerMin);
    figures.projectedTodayCost = projected.today;
    figures.projectedWeeklyCost = projected.week;
    figures.projectedMonthlyCost = projected.month;
}

void updateHistory(UsageFigures &figures, const LogReading &reading, Instant now) {
    const auto cutOff = cutOffOf(figures.timeFilter, now, figures.calendar);
    HistoryBuilder builder(figures.calendar);
    std::unordered_set<InternedString> sessions;
    for (const LogReading::Entries *entries : {reading.settledEntries.get(), &reading.unsettledEntries}) {
        for (const JSONLEntry &entry : *entries) {
            if (cutOff) {
                const auto instant = entry.timestamp();
                if (!instant || *instant < *cutOff)
                    continue;
                sessions.insert(entry.sessionId());
            }
            builder.add(entry);
        }
    }
    const std::size_t sessionCount = cutOff ? sessions.size() : reading.files.size();
    figures.historicalData =
        builder.finish(static_cast<std::int64_t>(sessionCount), figures.calendar.dayOf(now));
    figures.lastUpdated = now;
}

} // namespace burnwick
