// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/LogFileReader.h"

#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace burnwick {
namespace {

using test::usageLine;

/// Returns the bytes, then ends or fails.
class Source {
public:
    explicit Source(std::string bytes, bool failsAtEnd = false)
        : m_bytes(std::move(bytes))
        , m_failsAtEnd(failsAtEnd) {}

    ssize_t operator()(char *data, std::size_t size) {
        const std::size_t count = std::min(size, m_bytes.size() - m_at);
        if (count == 0 && m_failsAtEnd)
            return -1;
        std::memcpy(data, m_bytes.data() + m_at, count);
        m_at += count;
        return static_cast<ssize_t>(count);
    }

private:
    std::string m_bytes;
    bool m_failsAtEnd;
    std::size_t m_at = 0;
};

std::vector<JSONLEntry> read(const std::string &bytes,
                             std::size_t blockSize = LogFileReader::defaultBlockSize) {
    return LogFileReader(LineSelection::usageOnly, blockSize).read(Source(bytes)).value().entries;
}

const std::string line = usageLine("2025-06-01T12:00:00.000Z", 1, 2);

TEST(LogFileReader, TheLineFilterLosesNoUsageLine) {
    // The words, and escapes of their letters, at every offset from the chunks of the search.
    const char *fragments[] = {R"("usage")", R"("assistant")", R"(\u0075sage)", R"("type":"assistant")",
                               "\"",         "usage"};
    std::string bytes;
    for (std::size_t pad = 0; pad < 300; ++pad) {
        const std::string filler(pad, 'g');
        bytes += R"({"filler":")" + filler + R"(",)" + line.substr(1);
        bytes += R"({"filler":")" + filler + R"(","type":"assistant","message":{"\u0075sage":{}}})" + "\n";
        bytes += R"({"filler":")" + filler + "\"," + fragments[pad % std::size(fragments)] + "}\n";
        bytes += R"({"filler":")" + filler +
                 R"(","type":"assistant","message":{"content":"\"usage\""}})"
                 "\n";
    }
    std::vector<JSONLEntry> all = LogFileReader(LineSelection::all).read(Source(bytes)).value().entries;
    std::erase_if(all, [](const JSONLEntry &entry) { return !entry.isUsageLine(); });
    EXPECT_EQ(all.size(), 600U);
    EXPECT_EQ(read(bytes, 100), all);
    // The same without escapes, where only lines with both words are decoded.
    std::string plain = bytes;
    for (std::size_t i = plain.find("\\u0075"); i != std::string::npos; i = plain.find("\\u0075", i))
        plain.replace(i, 6, "u");
    EXPECT_EQ(read(plain), all);
}

TEST(LogFileReader, AFailureAfterSomeLinesYieldsNothing) {
    LogFileReader reader(LineSelection::usageOnly);
    EXPECT_FALSE(reader.read(Source(line + line, true)));
    // The next stream is not affected.
    EXPECT_EQ(reader.read(Source(line)).value().entries.size(), 1U);
}

TEST(LogFileReader, AStopRequestEndsTheReadingAtTheNextBlock) {
    const StopRequest stop;
    int reads = 0;
    const auto threeLines = [&](char *data, std::size_t) -> ssize_t {
        if (++reads == 2)
            stop.make();
        if (reads > 3)
            return 0;
        return static_cast<ssize_t>(line.copy(data, line.size()));
    };
    EXPECT_FALSE(LogFileReader(LineSelection::usageOnly).read(threeLines, stop));
    EXPECT_EQ(reads, 2);
}

} // namespace
} // namespace burnwick
