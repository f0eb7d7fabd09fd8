// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/EntryCodec.h"

#include <gtest/gtest.h>

#include <limits>

namespace burnwick {
namespace {

constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
constexpr auto highest = std::numeric_limits<std::int64_t>::max();

InternedString text(std::string_view bytes) {
    return InternedString(bytes);
}

std::vector<JSONLEntry> entries() {
    const InternedString assistant("assistant");
    const Instant now(std::chrono::seconds(1'750'000'000));
    const InternedString opus("opus");
    std::vector<JSONLEntry> list{{assistant, now, opus, SessionTokens{1, 2, 3, 4}},
                                 {assistant, now, opus, SessionTokens{}},
                                 {assistant, std::nullopt, opus, SessionTokens{-1, -64, -65, 127}},
                                 {assistant, Instant::min(), {}, SessionTokens{lowest, highest, 128, 0}},
                                 {assistant, Instant::max(), text(""), SessionTokens{1, 0, 0, 0}},
                                 {assistant, now, text("\xC3\xA4 sonnet"), SessionTokens{1, 0, 0, 0}},
                                 {assistant, now, opus, SessionTokens{1, 0, 0, 0}}};
    for (JSONLEntry &entry : list)
        entry.setSessionId(text("session"));
    return list;
}

std::vector<UsageDetails> details() {
    UsageDetails full{~std::uint64_t{0},
                      1,
                      std::uint64_t{1} << 63U,
                      text("s"),
                      text("/home/\xC3\xA4"),
                      text("standard"),
                      text("fast"),
                      text("us"),
                      lowest,
                      highest,
                      -1,
                      -7,
                      true,
                      true,
                      {{text("haiku"), {1, -2, highest, lowest}}, {{}, {}}}};
    UsageDetails otherNames;
    otherNames.folder = text("");
    UsageDetails free;
    free.cost = 0;
    return {{}, full, full, otherNames, {}, free, full};
}

bool decode(std::string_view bytes, std::vector<JSONLEntry> &list) {
    return decodeEntries(bytes, text("session"), list);
}
bool decode(std::string_view bytes, std::vector<UsageDetails> &list) {
    return decodeDetails(bytes, list);
}

template <typename Line>
void expectRoundTrip(const std::vector<Line> &list, std::string (*encode)(std::span<const Line>)) {
    std::vector<Line> decoded;
    EXPECT_TRUE(decode(encode(list), decoded));
    EXPECT_EQ(decoded, list);
    for (std::size_t i = 0; i < list.size(); ++i) {
        SCOPED_TRACE("line " + std::to_string(i));
        const std::string bytes = encode(std::span(list).subspan(i, 1));
        decoded.clear();
        EXPECT_TRUE(decode(bytes, decoded));
        EXPECT_EQ(decoded, std::vector{list[i]});
        for (std::size_t size = 1; size < bytes.size(); ++size)
            EXPECT_FALSE(decode(std::string_view(bytes).substr(0, size), decoded)) << size << " bytes";
    }
}

TEST(EntryCodec, EntriesAreDecodedAsTheyWereAndTruncatedOnesAreRejected) {
    expectRoundTrip(entries(), encodeEntries);
}

TEST(EntryCodec, DetailsAreDecodedAsTheyWereAndTruncatedOnesAreRejected) {
    expectRoundTrip(details(), encodeDetails);
}

TEST(EntryCodec, ATextThatIsUsedAgainIsStoredOnce) {
    const auto list = details();
    EXPECT_EQ(encodeDetails(std::vector{list[1], list[3], list[1]}).find("standard"),
              encodeDetails(std::vector{list[1], list[3], list[1]}).rfind("standard"));
}

TEST(EntryCodec, MalformedBytesAreRejected) {
    std::vector<JSONLEntry> list;
    EXPECT_FALSE(decode(std::string(12, '\xFF'), list)) << "a number of more than 64 bits";
    EXPECT_FALSE(decode(std::string("\2\2\1x\0\0\0\0", 8), list)) << "the ordinal of an unknown text";
    EXPECT_FALSE(decode(std::string("\2\1\x7Fx\0\0\0\0", 8), list)) << "a text beyond the end";
    EXPECT_TRUE(decode(std::string("\2\1\1x\0\0\0\0", 8), list)) << "the same without these faults";
}

} // namespace
} // namespace burnwick
