// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/MessageList.h"

#include <QHash>

#include <algorithm>
#include <functional>
#include <limits>

namespace burnwick {

namespace {

/// Returns the key of the usage of another model during a message.
std::uint64_t advisorKeyOf(std::uint64_t messageKey, std::uint64_t ordinal) {
    constexpr std::uint64_t oddNumber = 0x9E3779B97F4A7C15U;
    return messageKey ^ (ordinal * oddNumber);
}

/// Returns 0 for a count that no message has; sums of others cannot overflow.
std::int64_t plausible(std::int64_t count) {
    constexpr std::int64_t limit = std::int64_t{1} << 40U;
    return count >= 0 && count < limit ? count : 0;
}

/// What distinguishes messages: the identifiers of message and request, and the session without the latter.
struct Identity {
    std::uint64_t messageKey;
    std::uint64_t requestKey;
    InternedString session;

    explicit Identity(const Message &message)
        : messageKey(message.messageKey)
        , requestKey(message.requestKey)
        , session(message.requestKey == 0 ? message.context.session : InternedString()) {}
    bool operator==(const Identity &) const = default;
};

std::size_t qHash(const Identity &identity, std::size_t seed) {
    return static_cast<std::size_t>(identity.messageKey ^ (identity.requestKey << 1U)) ^ seed;
}

} // namespace

/// The indices of the messages that have an identifier.
class MessageList::Index : public QHash<Identity, std::size_t> {};

void MessageList::add(std::span<const JSONLEntry> lines, std::span<const UsageDetails> details) {
    static const InternedString fast("fast");
    static const InternedString batch("batch");
    static const InternedString unitedStates("us");
    static const InternedString notAModel("<synthetic>");
    if (lines.empty())
        return;

    Index index;
    index.reserve(static_cast<qsizetype>(m_messages.size() + lines.size()));
    for (std::size_t i = 0; i < m_messages.size(); ++i) {
        if (m_messages[i].messageKey != 0)
            index.insert(Identity((*this)[i]), i);
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const JSONLEntry &line = lines[i];
        const UsageDetails &facts = details[i];
        const InternedString session = facts.session.hasValue() ? facts.session : line.sessionId();
        const InternedString folder = projectOf(facts.folder);
        if (m_origins.empty() || m_origins.back().folder != folder || m_origins.back().session != session)
            m_origins.push_back({m_lineCount, folder, session});
        ++m_lineCount;
        if (facts.isApiError || line.model() == notAModel)
            continue;

        const SessionTokens &counts = line.counts();
        const std::int64_t write5m = plausible(facts.cacheWrite5m);
        const std::int64_t write1h = plausible(facts.cacheWrite1h);
        // Some versions wrote only one of the two.
        const std::int64_t writes = std::max<std::int64_t>(counts.cacheCreation, 0);
        const std::int64_t uncovered = std::max<std::int64_t>(writes - write5m - write1h, 0);
        Message message{facts.messageKey,
                        facts.requestKey,
                        line.timestamp(),
                        {line.model(), folder, session, facts.isSidechain, facts.speed == fast,
                         facts.serviceTier == batch, facts.geography == unitedStates},
                        std::max<std::int64_t>(counts.input, 0),
                        std::max<std::int64_t>(counts.output, 0),
                        write5m + uncovered,
                        write1h,
                        std::max<std::int64_t>(counts.cacheRead, 0),
                        plausible(facts.webSearches),
                        facts.cost};
        if (!addOrReplace(message, index))
            continue;
        // An advisor has the time of the message's first line.
        if (message.messageKey != 0)
            message.at = (*this)[index.value(Identity(message))].at;
        std::uint64_t ordinal = 0;
        for (const AdvisorUsage &advisor : facts.advisors) {
            Message other = message;
            other.messageKey = message.messageKey != 0 ? advisorKeyOf(message.messageKey, ++ordinal) : 0;
            other.context.model = advisor.model;
            other.context.isAdvisor = true;
            other.input = plausible(advisor.counts.input);
            other.output = plausible(advisor.counts.output);
            other.cacheWrite5m = plausible(advisor.counts.cacheCreation);
            other.cacheWrite1h = 0;
            other.cacheRead = plausible(advisor.counts.cacheRead);
            other.webSearches = 0;
            if (message.cost)
                other.cost = 0;
            // Also if it wrote less than in the line that is replaced.
            if (const auto known = index.constFind(Identity(other)); known != index.constEnd())
                set(*known, other);
            else
                addOrReplace(other, index);
        }
        if (message.messageKey == 0)
            continue;
        // The advisors of a line that was replaced.
        Message gone = message;
        for (gone.messageKey = advisorKeyOf(message.messageKey, ++ordinal); index.contains(Identity(gone));
             gone.messageKey = advisorKeyOf(message.messageKey, ++ordinal)) {
            const std::size_t place = index.value(Identity(gone));
            const Message former = (*this)[place];
            Message none{gone.messageKey, gone.requestKey, former.at, former.context};
            set(place, none);
        }
    }
}

/// Returns false if the message is known, and the known line has more output tokens.
bool MessageList::addOrReplace(const Message &message, Index &index) {
    if (message.messageKey != 0) {
        const auto size = index.size();
        std::size_t &known = index[Identity(message)];
        if (index.size() == size) {
            const Message former = (*this)[known];
            const bool isReplaced = message.output >= former.output;
            Message counting = isReplaced ? message : former;
            counting.at = former.at;
            counting.context.isSidechain = message.context.isSidechain && former.context.isSidechain;
            set(known, counting);
            return isReplaced;
        }
        known = m_messages.size();
    }
    m_messages.emplace_back();
    set(m_messages.size() - 1, message);
    return true;
}

/// Returns the folder in which the session began if it contains this one.
InternedString MessageList::projectOf(InternedString folder) {
    if (!m_firstFolder.hasValue())
        m_firstFolder = folder;
    const std::string_view first = m_firstFolder.view();
    const std::string_view path = folder.view();
    const bool isInside = path.size() > first.size() && path.starts_with(first) && path[first.size()] == '/';
    return isInside ? m_firstFolder : folder;
}

Message MessageList::operator[](std::size_t index) const {
    const Packed &packed = m_messages[index];
    Message message{packed.messageKey, packed.requestKey, {}, m_contexts[packed.context]};
    if (message.context.hasTime)
        message.at = packed.at;
    const std::array counts{&Message::input, &Message::output, &Message::cacheWrite5m, &Message::cacheWrite1h,
                            &Message::cacheRead};
    for (std::size_t i = 0; i < counts.size(); ++i)
        message.*counts[i] = packed.counts[i];
    if (packed.counts.back() != std::numeric_limits<std::uint32_t>::max())
        return message;
    const Rest &rest = m_rest.at(static_cast<std::uint32_t>(index));
    for (std::size_t i = 0; i < counts.size(); ++i)
        message.*counts[i] = rest.counts[i];
    message.webSearches = rest.webSearches;
    message.cost = rest.cost;
    return message;
}

void MessageList::set(std::size_t index, const Message &message) {
    constexpr std::uint32_t hasRest = std::numeric_limits<std::uint32_t>::max();
    const std::array counts{message.input, message.output, message.cacheWrite5m, message.cacheWrite1h,
                            message.cacheRead};
    const bool fits = message.webSearches == 0 && !message.cost &&
                      std::ranges::all_of(counts, [](std::int64_t n) { return n >= 0 && n < hasRest; });
    MessageContext context = message.context;
    context.hasTime = message.at.has_value();
    Packed packed{
        message.messageKey, message.requestKey, message.at.value_or(Instant()), {}, numberOf(context)};
    if (fits) {
        std::ranges::transform(counts, packed.counts.begin(),
                               [](std::int64_t n) { return static_cast<std::uint32_t>(n); });
        m_rest.erase(static_cast<std::uint32_t>(index));
    } else {
        packed.counts.fill(hasRest);
        m_rest[static_cast<std::uint32_t>(index)] = {counts, message.webSearches, message.cost};
    }
    m_messages[index] = packed;
}

/// Returns the context's number in the table.
std::uint32_t MessageList::numberOf(const MessageContext &context) {
    // Only among the last ones: a log may have a different context for each message.
    constexpr std::ptrdiff_t searched = 32;
    const auto end = m_contexts.rbegin() + std::min(searched, std::ssize(m_contexts));
    if (const auto known = std::find(m_contexts.rbegin(), end, context); known != end)
        return static_cast<std::uint32_t>(m_contexts.rend() - known - 1);
    m_contexts.push_back(context);
    return static_cast<std::uint32_t>(m_contexts.size() - 1);
}

} // namespace burnwick
