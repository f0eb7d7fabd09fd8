// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/EntryCodec.h"

#include "ledger/ByteCodec.h"

#include <array>

namespace burnwick {

namespace {

using Flags = std::uint64_t;

// Of an entry.
constexpr Flags hasTime = 1;
constexpr Flags hasOtherModel = 2;

// Of details.
constexpr Flags isSidechain = 1;
constexpr Flags isApiError = 2;
constexpr Flags hasLineKey = 4;
constexpr Flags hasMessageKey = 8;
constexpr Flags hasRequestKey = 16;
constexpr Flags hasWrite5m = 32;
constexpr Flags hasWrite1h = 64;
constexpr Flags hasSearches = 128;
constexpr Flags hasCost = 256;
constexpr Flags hasAdvisors = 512;
constexpr Flags hasOtherNames = 1024;

Flags flagIf(bool condition, Flags flag) {
    return condition ? flag : 0;
}

constexpr std::array nameMembers{&UsageDetails::session, &UsageDetails::folder, &UsageDetails::serviceTier,
                                 &UsageDetails::speed, &UsageDetails::geography};

/// A member that is encoded only if it is not 0.
template <typename Value>
struct Member {
    Flags flag;
    Value UsageDetails::*member;
};
constexpr Member<std::uint64_t> keyMembers[] = {{hasLineKey, &UsageDetails::lineKey},
                                                {hasMessageKey, &UsageDetails::messageKey},
                                                {hasRequestKey, &UsageDetails::requestKey}};
constexpr Member<std::int64_t> countMembers[] = {{hasWrite5m, &UsageDetails::cacheWrite5m},
                                                 {hasWrite1h, &UsageDetails::cacheWrite1h},
                                                 {hasSearches, &UsageDetails::webSearches}};

constexpr std::array tokenMembers{&SessionTokens::input, &SessionTokens::output,
                                  &SessionTokens::cacheCreation, &SessionTokens::cacheRead};

bool haveEqualNames(const UsageDetails &a, const UsageDetails &b) {
    for (const auto member : nameMembers) {
        if (a.*member != b.*member)
            return false;
    }
    return true;
}

} // namespace

std::string encodeEntries(std::span<const JSONLEntry> entries) {
    ByteWriter out;
    std::int64_t lastTime = 0;
    InternedString lastModel;
    for (const JSONLEntry &entry : entries) {
        const auto instant = entry.timestamp();
        const bool isOtherModel = entry.model() != lastModel;
        out.addUnsigned(flagIf(instant.has_value(), hasTime) | flagIf(isOtherModel, hasOtherModel));
        if (instant) {
            const std::int64_t time = instant->time_since_epoch().count();
            out.add(wrappingDifference(time, lastTime));
            lastTime = time;
        }
        if (isOtherModel)
            out.addName(entry.model());
        lastModel = entry.model();
        for (const auto member : tokenMembers)
            out.add(entry.counts().*member);
    }
    return out.bytes;
}

bool decodeEntries(std::string_view bytes, InternedString session, std::vector<JSONLEntry> &entries) {
    ByteReader in(bytes);
    static const InternedString assistant("assistant");
    std::int64_t time = 0;
    InternedString model;
    while (!in.atEnd()) {
        const Flags flags = in.readUnsigned();
        std::optional<Instant> instant;
        if ((flags & hasTime) != 0) {
            time = wrappingSum(time, in.read());
            instant = Instant(Instant::duration(time));
        }
        if ((flags & hasOtherModel) != 0)
            model = in.readName();
        SessionTokens counts;
        for (const auto member : tokenMembers)
            counts.*member = in.read();
        if (in.failed())
            return false;
        entries.emplace_back(assistant, instant, model, counts).setSessionId(session);
    }
    return true;
}

std::string encodeDetails(std::span<const UsageDetails> list) {
    ByteWriter out;
    UsageDetails last;
    for (const UsageDetails &details : list) {
        const bool areOtherNames = !haveEqualNames(details, last);
        Flags flags = flagIf(details.isSidechain, isSidechain) | flagIf(details.isApiError, isApiError) |
                      flagIf(details.cost.has_value(), hasCost) |
                      flagIf(!details.advisors.empty(), hasAdvisors) | flagIf(areOtherNames, hasOtherNames);
        for (const auto &[flag, member] : keyMembers)
            flags |= flagIf(details.*member != 0, flag);
        for (const auto &[flag, member] : countMembers)
            flags |= flagIf(details.*member != 0, flag);
        out.addUnsigned(flags);
        for (const auto &[flag, member] : keyMembers) {
            if ((flags & flag) != 0)
                out.addKey(details.*member);
        }
        for (const auto &[flag, member] : countMembers) {
            if ((flags & flag) != 0)
                out.add(details.*member);
        }
        if (areOtherNames) {
            for (const auto member : nameMembers)
                out.addName(details.*member);
        }
        if (details.cost)
            out.add(*details.cost);
        if (!details.advisors.empty()) {
            out.addUnsigned(details.advisors.size());
            for (const AdvisorUsage &advisor : details.advisors) {
                out.addName(advisor.model);
                for (const auto member : tokenMembers)
                    out.add(advisor.counts.*member);
            }
        }
        last = details;
    }
    return out.bytes;
}

bool decodeDetails(std::string_view bytes, std::vector<UsageDetails> &list) {
    ByteReader in(bytes);
    UsageDetails last;
    while (!in.atEnd()) {
        UsageDetails details;
        const Flags flags = in.readUnsigned();
        details.isSidechain = (flags & isSidechain) != 0;
        details.isApiError = (flags & isApiError) != 0;
        for (const auto &[flag, member] : keyMembers)
            details.*member = (flags & flag) != 0 ? in.readKey() : 0;
        for (const auto &[flag, member] : countMembers)
            details.*member = (flags & flag) != 0 ? in.read() : 0;
        for (const auto member : nameMembers)
            details.*member = (flags & hasOtherNames) != 0 ? in.readName() : last.*member;
        if ((flags & hasCost) != 0)
            details.cost = in.read();
        if ((flags & hasAdvisors) != 0) {
            for (std::uint64_t left = in.readUnsigned(); left > 0 && !in.failed(); --left) {
                AdvisorUsage &advisor = details.advisors.emplace_back();
                advisor.model = in.readName();
                for (const auto member : tokenMembers)
                    advisor.counts.*member = in.read();
            }
        }
        if (in.failed())
            return false;
        last = details;
        list.push_back(std::move(details));
    }
    return true;
}

} // namespace burnwick
