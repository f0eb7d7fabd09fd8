// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/LogFileReader.h"

#include "logs/LineFilter.h"
#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace burnwick {
namespace {

using test::usageLine;

/// Hands out the bytes in pieces of at most that many, then fails or ends.
class Source {
public:
    Source(std::string bytes, std::size_t piece, bool failsAtEnd = false)
        : m_bytes(std::move(bytes))
        , m_piece(piece)
        , m_failsAtEnd(failsAtEnd) {}

    ssize_t operator()(char *data, std::size_t size) {
        const std::size_t count = std::min({size, m_piece, m_bytes.size() - m_at});
        if (count == 0 && m_failsAtEnd)
            return -1;
        std::memcpy(data, m_bytes.data() + m_at, count);
        m_at += count;
        return static_cast<ssize_t>(count);
    }

private:
    std::string m_bytes;
    std::size_t m_piece;
    bool m_failsAtEnd;
    std::size_t m_at = 0;
};

std::vector<std::string> encoded(const std::vector<JSONLEntry> &entries) {
    std::vector<std::string> lines;
    for (const JSONLEntry &entry : entries)
        lines.push_back(encodeEntry(entry));
    return lines;
}

std::vector<std::string> read(const std::string &bytes,
                              std::size_t blockSize = LogFileReader::defaultBlockSize,
                              std::size_t piece = std::string::npos) {
    return encoded(LogFileReader(LineSelection::usageOnly, blockSize).read(Source(bytes, piece)));
}

std::size_t countIn(const std::string &bytes) {
    return read(bytes).size();
}

const std::string line = usageLine("2025-06-01T12:00:00.000Z", 1, 2);

TEST(LogFileReader, CountsEverythingThatIsWhole) {
    const struct {
        const char *what;
        std::string bytes;
        std::size_t count;
    } rows[] = {
        {"nothing", "", 0},
        {"one line", line, 1},
        {"without a feed at the end", line.substr(0, line.size() - 1), 1},
        {"carriage returns", line.substr(0, line.size() - 1) + "\r\n" + line, 2},
        {"empty and blank lines", "\n\n \t \n\r\n" + line + "\n", 1},
        {"garbage between", line + "usage\n\"usage\" \"assistant\"\n{\n" + line, 2},
        {"duplicates", line + line + line, 3},
        {"cut by a writer at work", line + line.substr(0, line.size() / 2), 1},
        {"a carriage return alone does not end a line", line.substr(0, line.size() - 1) + "\r" + line, 0},
        {"a NUL byte spoils its line only", line + std::string("\0\n", 2) + line, 2},
        {"an escape in the key", R"({"type":"assistant","message":{"us\u0061ge":{}}})", 1},
        {"an escape in the value", R"({"type":"\u0061ssistant","message":{"usage":{}}})", 1},
        {"an escape of a letter after o", R"({"type":"assistant","message":{"\u0075sage":{}}})", 1},
        {"an escape in another line", "{\"a\":\"\\u0070\"}\n" + line, 1},
        {"usage in a line of the user", R"({"type":"user","message":{"usage":{}},"of":"assistant"})", 0},
        {"usage that is no key of the message", R"({"type":"assistant","usage":{},"message":{}})", 0},
    };
    for (const auto &row : rows)
        EXPECT_EQ(countIn(row.bytes), row.count) << row.what;
}

TEST(LogFileReader, OneByteOfInvalidUtf8DropsTheWholeFile) {
    for (const char *bytes : {"\x80", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF"}) {
        EXPECT_EQ(countIn(line + "{\"type\":\"user\",\"text\":\"" + bytes + "\"}\n" + line), 0U);
        EXPECT_EQ(countIn(line + bytes), 0U);
        EXPECT_EQ(countIn(line + R"({"type":"assistant","message":{"usage":{}},"text":")" + bytes + "\"}\n"),
                  0U);
    }
    EXPECT_EQ(countIn(line + "{\"text\":\"\xF0\x9F\x98\x80\"}\n" + line), 2U);
}

TEST(LogFileReader, BlocksOfAnySizeGiveTheSame) {
    std::string bytes = "\n";
    for (int i = 0; i < 30; ++i) {
        bytes += usageLine("2025-06-01T12:00:00.000Z", i, 2);
        bytes += "{\"type\":\"user\",\"text\":\"" + std::string(static_cast<std::size_t>(i) * 37, 'x') +
                 "\xE2\x82\xAC\"}\n";
    }
    bytes += usageLine("2025-06-01T12:00:00.000Z", 31, 2);
    const auto whole = read(bytes);
    ASSERT_EQ(whole.size(), 31U);
    for (const std::size_t size : {1, 2, 3, 7, 64, 150, 151, 1000, 4096}) {
        EXPECT_EQ(read(bytes, size), whole) << "blocks of " << size;
        EXPECT_EQ(read(bytes, 4096, size), whole) << "pieces of " << size;
    }
}

TEST(LogFileReader, AMisleadingMatchHidesNoWordThatSharesItsQuote) {
    EXPECT_TRUE(mayBeUsageLine(R"({"type":"assistant","message":{"usage":{"gx":1}}})"));
    EXPECT_TRUE(mayBeUsageLine(R"({"abcdefg":"assistant","usage":{}})"));
    EXPECT_FALSE(mayBeUsageLine(R"({"abcdefg":"assistance","usage":{"gx":1}})"));
}

TEST(LogFileReader, SkippingLinesChangesNothing) {
    // Words and escapes of interest at every distance from the chunks in which the search looks.
    const char *fragments[] = {R"("usage")", R"("assistant")", R"(\u0075sage)", R"("type":"assistant")",
                               "\"",         "usage"};
    std::string bytes;
    for (std::size_t pad = 0; pad < 300; ++pad) {
        const std::string filler(pad, 'g');
        bytes += R"({"filler":")" + filler + R"(",)" + line.substr(1);
        bytes += R"({"filler":")" + filler + "\"," + fragments[pad % std::size(fragments)] + "}\n";
        bytes += R"({"filler":")" + filler +
                 R"(","type":"assistant","message":{"content":"\"usage\""}})"
                 "\n";
    }
    std::vector<JSONLEntry> all = LogFileReader(LineSelection::all).read(Source(bytes, std::string::npos));
    std::erase_if(all, [](const JSONLEntry &entry) { return !entry.isUsageLine(); });
    EXPECT_EQ(all.size(), 300U);
    EXPECT_EQ(read(bytes, 100), encoded(all));
    // The same without a single escape, where nothing but candidates is parsed.
    std::string plain = bytes;
    for (std::size_t i = plain.find("\\u0075"); i != std::string::npos; i = plain.find("\\u0075", i))
        plain.replace(i, 6, "u");
    EXPECT_EQ(read(plain), encoded(all));
}

TEST(LogFileReader, AFileThatCannotBeReadToItsEndYieldsNothing) {
    LogFileReader reader(LineSelection::usageOnly);
    EXPECT_TRUE(reader.read(Source(line + line, std::string::npos, true)).empty());
    // and leaves nothing behind for the next.
    EXPECT_EQ(reader.read(Source(line, std::string::npos)).size(), 1U);
}

TEST(LogFileReader, ALineLongerThanTheLongestIsPassedOverButItsUtf8IsChecked) {
    constexpr std::size_t longest = 1000;
    const auto lineOf = [](std::size_t size, const std::string &text) {
        const std::string begin = R"({"type":"assistant","message":{"usage":{}},"text":")" + text;
        return begin + std::string(size - begin.size() - 2, 'x') + "\"}";
    };
    std::string characters;
    while (characters.size() < 5000)
        characters += "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80y";
    const struct {
        const char *what;
        std::string bytes;
        std::size_t count;
    } rows[] = {
        {"the longest", line + lineOf(longest, "") + "\n" + line, 3},
        {"one byte longer", line + lineOf(longest + 1, "") + "\n" + line, 2},
        {"much longer", line + lineOf(9000, characters) + "\n" + line + line, 3},
        {"two much longer", lineOf(9000, characters) + "\n" + lineOf(7000, "") + "\n" + line, 1},
        {"at the end without a feed", line + lineOf(9000, characters), 1},
        {"ending in a character", line + characters + "\xF0\x9F\x98\x80", 1},
        {"ending in a cut character", line + characters + "\xF0\x9F\x98", 0},
        {"a cut character before the feed", line + characters + "\xE2\x82\n" + line, 0},
        {"a byte that is none", line + characters + "\x80" + characters + "\n" + line, 0},
        {"and in the line after it", characters + "\n{\"\xFF\"}\n" + line, 0},
    };
    for (const auto &row : rows) {
        for (const std::size_t blockSize : {1, 2, 3, 7, 64, 500, 1000, 4096, 1 << 16}) {
            for (const std::size_t piece : {std::size_t{5}, std::size_t{1001}, std::string::npos}) {
                LogFileReader reader(LineSelection::usageOnly, blockSize, longest);
                EXPECT_EQ(reader.read(Source(row.bytes, piece)).size(), row.count)
                    << row.what << ", blocks of " << blockSize << ", pieces of " << piece;
            }
        }
    }
}

TEST(LogFileReader, AStopRequestEndsTheReadingAtTheNextBlock) {
    std::stop_source stop;
    int reads = 0;
    Source source(line + line + line, line.size());
    const auto entries = LogFileReader(LineSelection::usageOnly)
                             .read(
                                 [&](char *data, std::size_t size) {
                                     if (++reads == 2)
                                         stop.request_stop();
                                     return source(data, size);
                                 },
                                 stop.get_token());
    EXPECT_TRUE(entries.empty());
    EXPECT_EQ(reads, 2);
}

TEST(LogFileReader, LinesLongerThanTheFastReadingTakesStillCount) {
    const std::string longLine = R"({"type":"assistant","content":")" +
                                 std::string(std::size_t{17} << 20U, 'x') +
                                 R"(","message":{"usage":{"output_tokens":5}}})";
    const auto entries = read(line + longLine + "\n" + line);
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[1], R"({"type":"assistant","message":{"usage":{"output_tokens":5}}})");
}

} // namespace
} // namespace burnwick
