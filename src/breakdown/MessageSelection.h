// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/LogHistory.h"

#include <QHash>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace burnwick {

/// A message of a list that does not count, or whose first line is in another list.
struct MessageChange {
    bool counts = false;
    std::optional<Instant> at; ///< of the first line; of no interest if the message does not count

    bool operator==(const MessageChange &) const = default;
};

/// The changes of a list's messages by their indices. Null if there are none.
using MessageChanges = std::shared_ptr<const std::map<std::uint32_t, MessageChange>>;

/// Decides which messages of several lists count, so that each counts once. It remembers the lists of the
/// last call, so that a change of one list costs its messages alone. For one thread at a time.
///
/// Two lists have the same message if the hashes of its identifier and its request's are equal. Of two
/// different ones in a million, that happens with a probability below 1e-26; one of them would not count.
class MessageSelection {
public:
    /// Returns the changes of each list; the lists are in the order of their files, and may be null. Of equal
    /// messages the one with the most output tokens counts, the last one of equals, at the time of the first.
    /// A message of a side chain does not count if the same session has the message in the main chain under
    /// another request. A list's changes are the same object until they differ.
    /// Throws std::bad_alloc, and has forgotten the lists then.
    [[nodiscard]] std::vector<MessageChanges> select(std::span<const LogEntries> lists);

private:
    struct Spot {
        std::uint32_t list = 0; ///< `shared` for messages in m_groups
        std::uint32_t index = 0;
    };
    struct List {
        LogEntries entries; ///< null if the place is free
        std::uint32_t order = 0;
        std::map<std::uint32_t, MessageChange> changes;
        MessageChanges published;
        bool isChanged = false; ///< since they were published
    };

    [[nodiscard]] std::vector<MessageChanges> update(std::span<const LogEntries> lists);
    void add(std::uint32_t place);
    void remove(std::uint32_t place);
    void decide(std::uint64_t messageKey);
    void setChange(const Spot &spot, const std::optional<MessageChange> &change);

    std::vector<List> m_lists;
    std::vector<std::uint32_t> m_free;
    std::unordered_map<const EntryList *, std::uint32_t> m_places;
    QHash<std::uint64_t, Spot> m_spots;
    std::unordered_map<std::uint64_t, std::vector<Spot>> m_groups; ///< of messages that occur several times
    std::unordered_set<std::uint64_t> m_undecided;                 ///< keys of groups
};

} // namespace burnwick
