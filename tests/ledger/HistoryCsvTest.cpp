// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/HistoryCsv.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

namespace burnwick {

static bool operator==(const SessionLines &a, const SessionLines &b) {
    return a.session == b.session && a.entries == b.entries && a.details == b.details;
}

namespace {

constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
constexpr auto highest = std::numeric_limits<std::int64_t>::max();

/// Decodes a text that arrives in parts of that many bytes.
std::vector<SessionLines> decode(std::string_view text, std::size_t part = std::string_view::npos) {
    HistoryCsvReader reader;
    for (; !text.empty(); text.remove_prefix(std::min(text.size(), part)))
        reader.add(text.substr(0, part));
    return reader.finish();
}
/// Returns the error; empty without one.
std::string errorOf(std::string_view text) {
    try {
        static_cast<void>(decode(text));
    } catch (const MalformedHistory &error) {
        return error.what();
    }
    return {};
}

/// Values that a form of text could lose.
class HostileValues {
public:
    std::int64_t count() {
        const std::int64_t counts[] = {0, 1, -1, 999'999'999'999, 1'000'000'000'000, lowest, highest, any()};
        return counts[pick(std::size(counts))];
    }
    std::uint64_t key() { return pick(3) == 0 ? 0 : static_cast<std::uint64_t>(any()) >> pick(64); }
    InternedString name() {
        static const std::vector<std::string> parts{
            "a", ",",  "\"",       "\"\"",         "\n",   "\r",     "\r\n", " ",    "\t",     "'",
            "=", "\\", "\xC3\xA4", "\xE2\x80\xA8", "\x01", "\x1B[m", "[",    "null", {"\0", 1}};
        if (pick(6) == 0)
            return {};
        std::string text;
        for (std::size_t left = pick(6); left > 0; --left)
            text += parts[pick(parts.size())];
        return InternedString(text);
    }
    std::optional<Instant> time() {
        const Instant times[] = {Instant::min(), Instant::max(), Instant(), Instant(Instant::duration(-1)),
                                 Instant(Instant::duration(any()))};
        const std::size_t choice = pick(std::size(times) + 1);
        return choice < std::size(times) ? std::optional(times[choice]) : std::nullopt;
    }
    SessionTokens counts() { return {count(), count(), count(), count()}; }
    UsageDetails details() {
        UsageDetails details{key(),        key(),        key(),
                             name(),       name(),       name(),
                             name(),       name(),       count(),
                             count(),      count(),      pick(2) == 0 ? std::nullopt : std::optional(count()),
                             pick(2) == 0, pick(2) == 0, {}};
        for (std::size_t left = pick(4); left > 1; --left)
            details.advisors.push_back({name(), counts()});
        return details;
    }
    SessionLines session(InternedString name) {
        SessionLines lines{name, {}, {}};
        for (std::size_t left = 1 + pick(4); left > 0; --left) {
            lines.entries.emplace_back(InternedString("assistant"), time(), this->name(), counts())
                .setSessionId(name);
            lines.details.push_back(details());
        }
        return lines;
    }

    std::size_t pick(std::size_t end) { return m_engine() % end; }

private:
    std::int64_t any() { return static_cast<std::int64_t>(m_engine()); }

    std::mt19937_64 m_engine{1};
};

TEST(HistoryCsv, LinesAreDecodedAsTheyWereAndTruncatedOnesAreRejected) {
    HostileValues values;
    for (int round = 0; round < 100; ++round) {
        std::string text = historyCsvHeader();
        std::vector<SessionLines> sessions;
        for (const InternedString name : {values.name(), InternedString("other")}) {
            sessions.push_back(values.session(name));
            appendHistoryCsv(text, sessions.back());
        }
        const auto rowsEnd = text.size();
        SessionLines more = values.session(sessions[0].session);
        appendHistoryCsv(text, more);
        std::ranges::copy(more.entries, std::back_inserter(sessions[0].entries));
        std::ranges::copy(more.details, std::back_inserter(sessions[0].details));

        for (const std::size_t part : {std::size_t{1}, 1 + values.pick(200), text.size()})
            ASSERT_TRUE(decode(text, part) == sessions) << part << " bytes at once of\n" << text;
        more.entries.resize(1);
        more.details.resize(1);
        std::string row;
        appendHistoryCsv(row, more);
        for (std::size_t size = 1; size < row.size(); ++size)
            ASSERT_NE(errorOf(text.substr(0, rowsEnd) + row.substr(0, size)), "")
                << size << " bytes of " << row;
    }
}

/// A file of two lines as the program writes it.
std::string fileOf(const std::string &column = "", const std::string &value = "") {
    const std::pair<std::string, std::string> cells[] = {
        {"session", "\"s\""},
        {"time", "2025-06-01T12:00:00.123456789Z"},
        {"model", "\"opus\""},
        {"input_tokens", "1"},
        {"output_tokens", "2"},
        {"cache_write_tokens", "3"},
        {"cache_read_tokens", "4"},
        {"cache_write_5m", "5"},
        {"cache_write_1h", "6"},
        {"web_searches", "7"},
        {"cost_usd", "-0.000000000001"},
        {"service_tier", "\"standard\""},
        {"speed", "\"\""},
        {"geography", ""},
        {"sidechain", "true"},
        {"api_error", "false"},
        {"project", "\"/home/\n\"\"p\""},
        {"log_session", "\"parent\""},
        {"line_key", "0000000000000001"},
        {"message_key", "ffffffffffffffff"},
        {"request_key", ""},
        {"advisors", R"("[[""haiku"",1,-2,3,4],[null,0,0,0,0]]")"},
    };
    std::string header;
    std::string good;
    std::string row;
    for (const auto &[name, cell] : cells) {
        const char *separator = header.empty() ? "" : ",";
        header += separator + name;
        good += separator + cell;
        row += separator + (name == column ? value : cell);
    }
    return header + '\n' + good + '\n' + row + '\n';
}

TEST(HistoryCsv, ColumnsHaveTheirValues) {
    const InternedString name("s");
    JSONLEntry entry(InternedString("assistant"),
                     Instant(std::chrono::nanoseconds(1'748'779'200'123'456'789)), InternedString("opus"),
                     SessionTokens{1, 2, 3, 4});
    entry.setSessionId(name);
    const UsageDetails details{1,
                               ~std::uint64_t{0},
                               0,
                               InternedString("parent"),
                               InternedString("/home/\n\"p"),
                               InternedString("standard"),
                               InternedString(""),
                               {},
                               5,
                               6,
                               7,
                               -1,
                               true,
                               false,
                               {{InternedString("haiku"), {1, -2, 3, 4}}, {}}};
    const SessionLines lines{name, {entry, entry}, {details, details}};
    std::string text = historyCsvHeader();
    appendHistoryCsv(text, lines);
    EXPECT_EQ(text, fileOf());

    // A later version may add columns and arrange them differently; other programs write other line ends.
    std::string other;
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t end = begin;
        for (bool quoted = false; text[end] != '\n' || quoted; ++end)
            quoted = quoted != (text[end] == '"');
        const std::string row = text.substr(begin, end - begin);
        const std::size_t comma = row.find(',');
        other += "later," + row.substr(comma + 1) + ",\"x\"," + row.substr(0, comma) + "\r\n\r\n";
        begin = end + 1;
    }
    EXPECT_TRUE(decode(other) == std::vector{lines}) << other;
}

TEST(HistoryCsv, MalformedFilesAreRejectedWithTheLine) {
    const struct {
        const char *column;
        std::vector<const char *> values;
    } malformedCells[] = {
        {"input_tokens", {"", "1.0", "+1", " 1", "1e3", "9223372036854775808", "\"1\"\"\""}},
        {"web_searches", {"x"}},
        {"time",
         {"2025-06-01T12:00:00Z", "2025-06-01T12:00:00.123456789", "2025-06-31T12:00:00.123456789Z",
          "2025-06-01T24:00:00.123456789Z", "2025-06-01T12:00:60.123456789Z",
          "2025-06-01 12:00:00.123456789Z", "2025-06-01T12:00:00.-23456789Z",
          "1677-09-21T00:12:43.145224191Z", "2262-04-11T23:47:16.854775808Z",
          "9999-12-31T00:00:00.000000000Z", "0", "x"}},
        {"line_key", {"1", "000000000000000g", "00000000000000001", "-000000000000001"}},
        {"cost_usd",
         {"1", "1.5", ".000000000001", "1.0000000000000", "9223372.036854775808", "1.-00000000001",
          "$1.000000000000", "1,000000000000"}},
        {"sidechain", {"", "1", "TRUE"}},
        {"model", {"\"\xFF\"", "\"\xED\xA0\x80\"", "\"a\"b", "a\"b", "\"a\" "}},
        {"advisors",
         {"[]", "x", R"("{""a"":1}")", R"("[[""a"",1,2,3]]")", R"("[[""a"",1,2,3,4,5]]")",
          R"("[[1,1,2,3,4]]")", R"("[[""a"",1,2,3,4.5]]")", R"("[[""a"",1,2,3,9223372036854775808]]")",
          R"("[[""a"",1,2,3,null]]")"}},
    };
    // The project's name in the second line has a line feed.
    for (const auto &[column, values] : malformedCells) {
        for (const char *value : values)
            EXPECT_TRUE(errorOf(fileOf(column, value)).starts_with("line 4: ")) << column << ' ' << value;
    }
    EXPECT_EQ(errorOf(fileOf("time", "x")), "line 4: malformed value in the column \"time\"");

    const std::string file = fileOf();
    const std::string header = historyCsvHeader();
    const std::pair<std::string, const char *> malformedFiles[] = {
        {"", "line 1: no column \"session\", so this is no history that Burnwick exported"},
        {"\n\n", "line 3: no column \"session\", so this is no history that Burnwick exported"},
        {file.substr(file.find('\n') + 1),
         "line 1: no column \"session\", so this is no history that Burnwick exported"},
        {header.substr(0, header.rfind(',')) + '\n',
         "line 1: no column \"advisors\", so this is no history that Burnwick exported"},
        {file + "\"s\",\n", "line 6: the number of cells is 2 instead of 22"},
        {fileOf("speed", ","), "line 4: the number of cells is 23 instead of 22"},
        {fileOf("model", "\"a\"b"), "line 4: malformed quotes"},
        {file.substr(0, file.size() - 1), "line 4: the line is truncated"},
        {file + "\"s\n", "line 6: the line is truncated"},
        {file + std::string((16U << 20U) + (1U << 16U) + 1, '\n' + 1), "line 6: the line is too long"},
    };
    for (const auto &[text, error] : malformedFiles)
        EXPECT_EQ(errorOf(text), error) << text.substr(0, 1000);
}

} // namespace
} // namespace burnwick
