// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/JSONLDecoder.h"

#include <gtest/gtest.h>

#include <string>

namespace burnwick {
namespace {

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

TEST(JSONLDecoder, BothReadingsGiveAnEntryThatEncodesWhatItHas) {
    const std::string full =
        R"({"type":"assistant","timestamp":"2025-01-15T10:30:45.120000-00:00","message":{"model":"m","usage":)"
        R"({"input_tokens":0,"output_tokens":2,"cache_creation_input_tokens":3,"cache_read_input_tokens":-4}}})";
    const struct {
        std::string line, encoded;
    } rows[] = {
        {full, full},
        {R"({"timestamp":"yesterday \"noon\"\u0001"})", R"({"timestamp":"yesterday \"noon\"\u0001"})"},
        {R"({"type":"\u00e9\u20ac\ud83d\ude00\/\n"})", R"({"type":"é€😀/\u000a"})"},
        // What is null is absent.
        {R"({"type":null,"timestamp":null,"message":null})", R"({})"},
        {R"({"message":{"model":null,"usage":null}})", R"({"message":{}})"},
        {R"({"message":{"model":"","usage":{}}})", R"({"message":{"model":"","usage":{}}})"},
        {R"({"message":{"usage":{"input_tokens":null,"output_tokens":12}}})",
         R"({"message":{"usage":{"output_tokens":12}}})"},
        // The last value of a repeated key counts.
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
        auto entry = decoder.decodeFast(row.line).value();
        entry.setSessionId(InternedString("never written"));
        EXPECT_EQ(encodeEntry(entry), row.encoded) << row.line;
        EXPECT_EQ(encodeEntry(decoder.decodeTolerant(row.line).value()), row.encoded) << row.line;
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
