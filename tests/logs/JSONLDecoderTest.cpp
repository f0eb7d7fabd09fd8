// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/JSONLDecoder.h"

#include <gtest/gtest.h>

#include <string>

namespace burnwick {
namespace {

std::string nested(std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
}

/// A usage line with something more at its top level.
std::string usageLineWith(const std::string &member) {
    return R"({"type":"assistant",)" + member + R"(,"message":{"usage":{"output_tokens":12}}})";
}

TEST(JSONLDecoder, ReadsTheNineKeys) {
    const auto entry = JSONLDecoder().decode(
        R"( {"uuid":"x","type":"assistant","timestamp":"2025-01-15T10:30:45.123+02:00","message":{"content":[{"type":"text","usage":1}],)"
        R"("model":"claude-opus-4","usage":{"input_tokens":1,"output_tokens":-2,"cache_creation_input_tokens":9223372036854775807,)"
        R"("cache_read_input_tokens":-9223372036854775808,"service_tier":"standard"}}} )"
        "\r");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->type().view(), "assistant");
    EXPECT_EQ(entry->timestamp().text(), "2025-01-15T10:30:45.123+02:00");
    EXPECT_EQ(entry->sessionId().view(), "");
    const JSONLEntry::UsageWrapper usage{1, -2, INT64_MAX, INT64_MIN};
    EXPECT_EQ(entry->message(), (JSONLEntry::MessageWrapper{InternedString("claude-opus-4"), usage}));
    EXPECT_TRUE(entry->isUsageLine());
}

TEST(JSONLDecoder, AbsentAndNullValuesAreAbsent) {
    const struct {
        const char *line;
        std::optional<JSONLEntry::MessageWrapper> message;
    } rows[] = {
        {R"({})", std::nullopt},
        {R"({"type":null,"timestamp":null,"message":null})", std::nullopt},
        {R"({"message":{}})", JSONLEntry::MessageWrapper{}},
        {R"({"message":{"model":null,"usage":null}})", JSONLEntry::MessageWrapper{}},
        {R"({"message":{"model":"","usage":{}}})",
         JSONLEntry::MessageWrapper{InternedString(""), JSONLEntry::UsageWrapper{}}},
        {R"({"message":{"usage":{"input_tokens":null,"output_tokens":12}}})",
         JSONLEntry::MessageWrapper{{},
                                    JSONLEntry::UsageWrapper{std::nullopt, 12, std::nullopt, std::nullopt}}},
    };
    JSONLDecoder decoder;
    for (const auto &row : rows) {
        const auto entry = decoder.decode(row.line);
        ASSERT_TRUE(entry) << row.line;
        EXPECT_FALSE(entry->type().hasValue()) << row.line;
        EXPECT_EQ(entry->timestamp().text(), std::nullopt) << row.line;
        EXPECT_EQ(entry->message(), row.message) << row.line;
    }
}

struct Line {
    std::string text;
    bool fast;     ///< whether the fast reading takes it
    bool tolerant; ///< whether the tolerant reading does, and so the decoder
};

TEST(JSONLDecoder, TheSecondReadingMendsWhatTheFirstRefusesAndNothingElse) {
    const Line lines[] = {
        // Both take it.
        {R"({"type":"user"})", true, true},
        {usageLineWith(R"("n":-0.5e+3)"), true, true},
        {usageLineWith(R"("s":"\ud83d\ude00 \u00e9 \"\\\/\b\f\n\r\t")"), true, true},
        {usageLineWith("\"s\":\"\xC3\xA9\""), true, true},
        {usageLineWith(R"("a":[{},[],{"b":[1,{"c":null}]},true,false,"x"])"), true, true},
        {R"({"\u0074ype":"\u0061ssistant","message":{"\u0075sage":{"output_tokens":12}}})", true, true},
        {R"({"message":{"usage":{"output_tokens":-0}}})", true, true},
        // What Claude Code writes into keys that do not matter here.
        {usageLineWith(R"("n":123456789012345678901234567890)"), false, true},
        {usageLineWith(R"("n":1e400)"), false, true},
        {usageLineWith(R"("s":"\ud83d")"), false, true},
        {usageLineWith(R"("s":"\ude00\ud83d")"), false, true},
        {usageLineWith(R"("\ud83d":{"type":1})"), false, true},
        {usageLineWith(R"("\ud83dtype":1)"), false, true},
        {usageLineWith(R"("type\ude00":1)"), false, true},
        {usageLineWith(R"("a":)" + nested(10'000)), false, true},
        // The same where it does matter.
        {R"({"type":"\ud83d"})", false, false},
        {R"({"timestamp":"\ude00"})", false, false},
        {R"({"message":{"model":"\ud83dx"}})", false, false},
        {R"({"message":{"usage":{"input_tokens":123456789012345678901234567890}}})", false, false},
        {R"({"message":{"usage":{"input_tokens":9223372036854775808}}})", false, false},
        {R"({"message":{"usage":{"input_tokens":1.5,"n":1e400}}})", false, false},
        // Wrong types at each of the nine keys.
        {R"({"type":1})", false, false},
        {R"({"timestamp":{}})", false, false},
        {R"({"message":"text"})", false, false},
        {R"({"message":[]})", false, false},
        {R"({"message":{"model":false}})", false, false},
        {R"({"message":{"usage":[]}})", false, false},
        {R"({"message":{"usage":{"input_tokens":"12"}}})", false, false},
        {R"({"message":{"usage":{"output_tokens":12.0}}})", false, false},
        {R"({"message":{"usage":{"cache_creation_input_tokens":1e3}}})", false, false},
        {R"({"message":{"usage":{"cache_read_input_tokens":true}}})", false, false},
        // Not one JSON object.
        {"", false, false},
        {"garbage", false, false},
        {"[]", false, false},
        {"null", false, false},
        {R"("type")", false, false},
        {R"({"type":"user"} {})", false, false},
        {R"({"type":"user"},)", false, false},
        {R"({"type":"user")", false, false},
        {R"({"type":"user",})", false, false},
        {R"({"type" "user"})", false, false},
        {R"({type:"user"})", false, false},
        {R"({"type":'user'})", false, false},
        {usageLineWith(R"("n":01)"), false, false},
        {usageLineWith(R"("n":+1)"), false, false},
        {usageLineWith(R"("n":1.)"), false, false},
        {usageLineWith(R"("n":.5)"), false, false},
        {usageLineWith(R"("n":-)"), false, false},
        {usageLineWith(R"("n":1e)"), false, false},
        {usageLineWith(R"("n":tru)"), false, false},
        {usageLineWith(R"("n":NaN)"), false, false},
        {usageLineWith(R"("a":[1,])"), false, false},
        {usageLineWith(R"("a":[1 2])"), false, false},
        {usageLineWith(R"("a":{"b"})"), false, false},
        {usageLineWith(R"("a":{"b":1])"), false, false},
        {usageLineWith(R"("s":"\x")"), false, false},
        {usageLineWith(R"("s":"\u12g4")"), false, false},
        {usageLineWith(R"("s":"\ud83d\u12")"), false, false},
        {usageLineWith("\"s\":\"a\tb\""), false, false},
        {usageLineWith("\"s\":\"\x80\""), false, false},
        {usageLineWith("\"s\":\"\xED\xA0\xBD\""), false, false},
        {usageLineWith(std::string("\"s\":\"a\0b\"", 9)), false, false},
        {R"({"type":"user"})" + std::string(1, '\0'), false, false},
        {usageLineWith(R"("a":)" + std::string(10'000, '[')), false, false},
    };
    JSONLDecoder decoder;
    for (const Line &line : lines) {
        const auto shown = line.text.substr(0, 120);
        const auto fast = decoder.decodeFast(line.text);
        const auto tolerant = decoder.decodeTolerant(line.text);
        EXPECT_EQ(fast.has_value(), line.fast) << shown;
        EXPECT_EQ(tolerant.has_value(), line.tolerant) << shown;
        EXPECT_EQ(decoder.decode(line.text).has_value(), line.fast || line.tolerant) << shown;
        if (fast && tolerant) {
            EXPECT_EQ(encodeEntry(*fast), encodeEntry(*tolerant)) << shown;
        }
    }
}

TEST(JSONLDecoder, BothReadingsGiveARepeatedKeyItsLastValue) {
    const struct {
        const char *line;
        const char *expected;
    } rows[] = {
        {R"({"type":"user","type":"assistant","message":{"model":"a"},"message":{"model":"b","usage":)"
         R"({"input_tokens":1,"input_tokens":2,"output_tokens":3,"output_tokens":null}}})",
         R"({"type":"assistant","message":{"model":"b","usage":{"input_tokens":2}}})"},
        {R"({"message":{"usage":{"input_tokens":1}},"message":null})", R"({})"},
        {R"({"message":{"usage":{"input_tokens":1},"usage":null}})", R"({"message":{}})"},
        {R"({"message":{"usage":{"input_tokens":1},"usage":{}}})", R"({"message":{"usage":{}}})"},
        {R"({"type":"user","type":null,"message":{"model":"a","model":null}})", R"({"message":{}})"},
    };
    JSONLDecoder decoder;
    for (const auto &row : rows) {
        EXPECT_EQ(encodeEntry(decoder.decodeFast(row.line).value()), row.expected) << row.line;
        EXPECT_EQ(encodeEntry(decoder.decodeTolerant(row.line).value()), row.expected) << row.line;
    }
}

TEST(JSONLDecoder, TheTolerantReadingUnescapesTexts) {
    const auto entry = JSONLDecoder().decodeTolerant(
        R"({"type":"\u00e9\u20ac\ud83d\ude00\n\/\u0000.","message":{"model":"\"\\"}})");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->type().view(), std::string("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\n/\0.", 13));
    EXPECT_EQ(entry->model().view(), "\"\\");
}

TEST(JSONLEntryTest, EncodesWhatItHasAndDecodesBackToIt) {
    for (
        const char *line :
        {R"({})", R"({"type":"user"})", R"({"timestamp":"2025-01-15T10:30:45Z"})",
         R"({"timestamp":"yesterday \"noon\"\u0001"})", R"({"message":{}})", R"({"message":{"usage":{}}})",
         R"({"type":"assistant","timestamp":"2025-01-15T10:30:45.120000-00:00","message":{"model":"m","usage":)"
         R"({"input_tokens":0,"output_tokens":2,"cache_creation_input_tokens":3,"cache_read_input_tokens":-4}}})"}) {
        auto entry = JSONLDecoder().decode(line);
        ASSERT_TRUE(entry) << line;
        entry->setSessionId(InternedString("never written"));
        EXPECT_EQ(encodeEntry(*entry), line);
    }
}

TEST(JSONLEntryTest, OnlyAssistantLinesWithUsageCount) {
    const struct {
        const char *line;
        bool counts;
    } rows[] = {
        {R"({"type":"assistant","message":{"usage":{}}})", true},
        {R"({"type":"assistant","message":{"model":"m"}})", false},
        {R"({"type":"assistant"})", false},
        {R"({"type":"Assistant","message":{"usage":{}}})", false},
        {R"({"type":"user","message":{"usage":{}}})", false},
        {R"({"message":{"usage":{}}})", false},
    };
    for (const auto &row : rows)
        EXPECT_EQ(JSONLDecoder().decode(row.line).value().isUsageLine(), row.counts) << row.line;
}

} // namespace
} // namespace burnwick
