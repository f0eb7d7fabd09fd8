// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "breakdown/ExactCounting.h"

#include <unordered_map>
#include <utility>

namespace burnwick {

SessionFigures ExactCounting::session(std::span<const LogEntries> recent) {
    const std::vector<MessageChanges> changes = m_recent.select(recent);
    std::unordered_map<const EntryList *, std::shared_ptr<const SessionPart>> known;
    for (const auto &part : std::exchange(m_lastParts, {}))
        known.emplace(part->entries.get(), part);
    for (std::size_t i = 0; i < recent.size(); ++i) {
        if (recent[i] == nullptr)
            continue;
        const auto &part = known[recent[i].get()];
        m_lastParts.push_back(part != nullptr && part->changes == changes[i]
                                  ? part
                                  : std::make_shared<const SessionPart>(recent[i], changes[i], m_prices));
    }
    return exactSessionOf(m_lastParts);
}

std::shared_ptr<const BreakdownSums> ExactCounting::sums(const LogHistory &history,
                                                         const Calendar &calendar) {
    // Kept lines are older than those of existing logs.
    std::vector<LogEntries> lists = history.kept;
    lists.insert(lists.end(), history.entries.begin(), history.entries.end());
    m_lastSums = std::make_shared<const BreakdownSums>(lists, m_all.select(lists), m_prices, calendar,
                                                       m_lastSums.get());
    return m_lastSums;
}

} // namespace burnwick
