// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "breakdown/MessageSelection.h"

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

namespace burnwick {

namespace {

constexpr std::uint32_t shared = std::numeric_limits<std::uint32_t>::max();

/// A message in a group of those with the same identifier.
struct Candidate {
    Message message;
    std::uint32_t list;
    std::uint32_t index;
    std::uint32_t order; ///< of the list

    [[nodiscard]] auto request() const {
        const InternedString session = message.requestKey == 0 ? message.context.session : InternedString();
        return std::tuple(message.requestKey, session.view());
    }
};

} // namespace

std::vector<MessageChanges> MessageSelection::select(std::span<const LogEntries> lists) {
    try {
        return update(lists);
    } catch (...) {
        // Half an update would count messages twice, or not at all.
        *this = MessageSelection();
        throw;
    }
}

std::vector<MessageChanges> MessageSelection::update(std::span<const LogEntries> lists) {
    std::unordered_set<const EntryList *> present;
    for (const LogEntries &list : lists)
        present.insert(list.get());
    for (std::uint32_t place = 0; place < m_lists.size(); ++place) {
        if (m_lists[place].entries != nullptr && !present.contains(m_lists[place].entries.get()))
            remove(place);
    }

    qsizetype messages = 0;
    for (const LogEntries &list : lists)
        messages += list != nullptr ? static_cast<qsizetype>(list->messages.size()) : 0;
    m_spots.reserve(messages);

    std::uint32_t order = 0;
    std::uint32_t lastOrder = 0;
    bool isSameOrder = true;
    for (const LogEntries &list : lists) {
        ++order;
        if (list == nullptr || list->messages.size() == 0)
            continue;
        if (const auto known = m_places.find(list.get()); known != m_places.end()) {
            List &former = m_lists[known->second];
            isSameOrder &= lastOrder <= former.order;
            lastOrder = std::exchange(former.order, order);
            continue;
        }
        if (m_free.empty()) {
            m_free.push_back(static_cast<std::uint32_t>(m_lists.size()));
            m_lists.emplace_back();
        }
        const std::uint32_t place = m_free.back();
        m_free.pop_back();
        m_lists[place].entries = list;
        m_lists[place].order = order;
        m_places.emplace(list.get(), place);
        add(place);
    }
    if (!isSameOrder) {
        for (const auto &[key, spots] : m_groups)
            m_undecided.insert(key);
    }
    for (const std::uint64_t key : std::exchange(m_undecided, {}))
        decide(key);

    std::vector<MessageChanges> changes;
    changes.reserve(lists.size());
    for (const LogEntries &list : lists) {
        const auto known = m_places.find(list.get());
        if (known == m_places.end()) {
            changes.emplace_back();
            continue;
        }
        List &state = m_lists[known->second];
        if (std::exchange(state.isChanged, false)) {
            const bool isEqual =
                state.published != nullptr ? *state.published == state.changes : state.changes.empty();
            if (!isEqual)
                state.published =
                    state.changes.empty()
                        ? nullptr
                        : std::make_shared<const std::map<std::uint32_t, MessageChange>>(state.changes);
        }
        changes.push_back(state.published);
    }
    return changes;
}

void MessageSelection::add(std::uint32_t place) {
    const MessageList &messages = m_lists[place].entries->messages;
    for (std::uint32_t index = 0; index < messages.size(); ++index) {
        const std::uint64_t key = messages.messageKeyOf(index);
        if (key == 0)
            continue;
        const auto size = m_spots.size();
        Spot &known = m_spots[key];
        if (m_spots.size() > size) {
            known = {place, index};
            continue;
        }
        std::vector<Spot> &group = m_groups[key];
        if (known.list != shared)
            group.push_back(std::exchange(known, {shared, 0}));
        group.push_back({place, index});
        m_undecided.insert(key);
    }
}

void MessageSelection::remove(std::uint32_t place) {
    List &list = m_lists[place];
    const MessageList &messages = list.entries->messages;
    std::unordered_set<std::uint64_t> handled; // keys of groups, which a list may be in often
    for (std::uint32_t index = 0; index < messages.size(); ++index) {
        const std::uint64_t key = messages.messageKeyOf(index);
        const auto known = m_spots.constFind(key);
        if (known == m_spots.constEnd())
            continue;
        if (known->list != shared) {
            m_spots.erase(known);
            continue;
        }
        if (!handled.insert(key).second)
            continue;
        const auto group = m_groups.find(key);
        std::erase_if(group->second, [place](const Spot &spot) { return spot.list == place; });
        m_undecided.insert(key);
        if (group->second.empty()) {
            m_groups.erase(group);
            m_spots.erase(known);
            m_undecided.erase(key);
        }
    }
    m_places.erase(list.entries.get());
    list = {};
    m_free.push_back(place);
}

void MessageSelection::decide(std::uint64_t messageKey) {
    std::vector<Candidate> candidates;
    for (const Spot &spot : m_groups.at(messageKey)) {
        const List &list = m_lists[spot.list];
        candidates.push_back({list.entries->messages[spot.index], spot.list, spot.index, list.order});
    }
    std::ranges::sort(candidates, {}, [](const Candidate &candidate) {
        return std::tuple_cat(candidate.request(), std::tuple(candidate.order, candidate.index));
    });

    // Of each message the lists have it in a range of candidates.
    struct Winner {
        const Candidate *candidate;
        bool isInMainChain; ///< whether a line of its session and request is
    };
    std::vector<Winner> winners;
    std::unordered_set<InternedString> mainChains;
    for (auto first = candidates.begin(); first != candidates.end();) {
        const auto end = std::find_if(first, candidates.end(), [first](const Candidate &other) {
            return other.request() != first->request();
        });
        const Candidate *winner = &*first;
        for (auto other = first; other != end; ++other) {
            if (other->message.output >= winner->message.output)
                winner = &*other;
            // Also of a line that does not count: a session that was resumed has copies in another one.
            if (!other->message.context.isSidechain)
                mainChains.insert(other->message.context.session);
        }
        for (auto other = first; other != end; ++other) {
            std::optional<MessageChange> change;
            if (&*other != winner)
                change.emplace();
            else if (other->message.at != first->message.at)
                change = {true, first->message.at};
            setChange({other->list, other->index}, change);
        }
        const InternedString session = winner->message.context.session;
        const bool isInMainChain = std::any_of(first, end, [session](const Candidate &candidate) {
            const MessageContext &context = candidate.message.context;
            return !context.isSidechain && context.session == session;
        });
        winners.push_back({winner, isInMainChain});
        first = end;
    }
    for (const auto &[winner, isInMainChain] : winners) {
        if (!isInMainChain && mainChains.contains(winner->message.context.session))
            setChange({winner->list, winner->index}, MessageChange());
    }
}

void MessageSelection::setChange(const Spot &spot, const std::optional<MessageChange> &change) {
    List &list = m_lists[spot.list];
    list.isChanged = true;
    if (change)
        list.changes[spot.index] = *change;
    else
        list.changes.erase(spot.index);
}

} // namespace burnwick
