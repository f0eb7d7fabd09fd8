// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/SessionLines.h"

#include "ledger/EntryCodec.h"
#include "ledger/TableRow.h"

#include <cstdint>
#include <string>
#include <unordered_map>

namespace burnwick {

namespace {

/// Returns a hash that is the same in each copy of the log. Old versions of Claude Code wrote no key.
std::uint64_t identityOf(const JSONLEntry &entry, const UsageDetails &details) {
    if (details.lineKey != 0)
        return details.lineKey;
    const std::string bytes = encodeEntries(std::span(&entry, 1)) + encodeDetails(std::span(&details, 1));
    return static_cast<std::uint64_t>(checksumOf(bytes, 0));
}

} // namespace

void SessionLines::add(const SessionLines &others) {
    entries.insert(entries.end(), others.entries.begin(), others.entries.end());
    details.insert(details.end(), others.details.begin(), others.details.end());
}

void SessionLines::remove(std::span<const JSONLEntry> others, std::span<const UsageDetails> othersDetails) {
    std::unordered_map<std::uint64_t, std::size_t> left;
    for (std::size_t i = 0; i < othersDetails.size(); ++i)
        ++left[identityOf(others[i], othersDetails[i])];
    std::size_t size = 0;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (const auto found = left.find(identityOf(entries[i], details[i]));
            found != left.end() && found->second > 0) {
            --found->second;
            continue;
        }
        entries[size] = entries[i];
        details[size++] = details[i];
    }
    entries.resize(size);
    details.resize(size);
}

} // namespace burnwick
