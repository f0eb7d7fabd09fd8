// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/JSONLDecoder.h"

#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace burnwick {
namespace {

TEST(JSONLDecoder, ReadsTheNineKeys) {
    constexpr auto largest = std::numeric_limits<std::int64_t>::max();
    constexpr auto smallest = std::numeric_limits<std::int64_t>::min();
    const auto entry = JSONLDecoder().decode(
        R"( {"uuid":"x","type":"assistant","timestamp":"2025-01-15T10:30:45.123+02:00","message":{"content":[{"type":"text","usage":1}],)"
        R"("model":"claude-opus-4","usage":{"input_tokens":1,"output_tokens":-2,"cache_creation_input_tokens":9223372036854775807,)"
        R"("cache_read_input_tokens":-9223372036854775808,"service_tier":"standard"}}} )"
        "\r");
    EXPECT_EQ(entry, JSONLEntry(InternedString("assistant"), test::at("2025-01-15T08:30:45.123Z"),
                                InternedString("claude-opus-4"), SessionTokens{1, -2, largest, smallest}));
}

/// What the entry has; a text that is null as "-".
std::string described(const std::optional<JSONLEntry> &entry) {
    if (!entry)
        return "refused";
    const auto textOf = [](InternedString text) { return text.hasValue() ? std::string(text.view()) : "-"; };
    const SessionTokens &counts = entry->counts();
    return textOf(entry->type()) + ' ' + (entry->timestamp() ? "dated" : "undated") + ' ' +
           textOf(entry->model()) + ' ' + std::to_string(counts.input) + ' ' + std::to_string(counts.output) +
           (entry->isUsageLine() ? " counts" : "");
}

TEST(JSONLDecoder, DecodesNullsRepeatedKeysAndEscapes) {
    const std::string dated = R"("timestamp":"2025-01-15T10:30:45.1Z")";
    const std::pair<std::string, const char *> rows[] = {
        {R"({})", "- undated - 0 0"},
        {R"({"type":null,"timestamp":null,"message":null})", "- undated - 0 0"},
        {R"({"type":"assistant","message":{"model":null,"usage":null}})", "assistant undated - 0 0"},
        {R"({"type":"assistant","message":{"model":"","usage":{}}})", "assistant undated  0 0 counts"},
        {R"({"type":"assistant","message":{"model":"m"}})", "assistant undated m 0 0"},
        {R"({"type":"Assistant","message":{"usage":{}}})", "Assistant undated - 0 0"},
        {R"({"message":{"usage":{"input_tokens":null,"output_tokens":12}}})", "- undated - 0 12"},
        {"{" + dated + "}", "- dated - 0 0"},
        {R"({"timestamp":"2025-01-15T10:30:45Z"})", "- undated - 0 0"},
        {R"({"timestamp":"yesterday \"noon\""})", "- undated - 0 0"},
        {R"({"type":"user","type":"assistant","message":{"model":"a"},"message":{"model":"b","usage":)"
         R"({"input_tokens":1,"input_tokens":2,"output_tokens":3,"output_tokens":null}}})",
         "assistant undated b 2 0 counts"},
        {R"({"message":{"model":"a","usage":{"input_tokens":1}},"message":null})", "- undated - 0 0"},
        {R"({"type":"assistant","message":{"usage":{"input_tokens":1},"usage":null}})",
         "assistant undated - 0 0"},
        {R"({"type":"assistant","message":{"usage":{"input_tokens":1},"usage":{}}})",
         "assistant undated - 0 0 counts"},
        {R"({"type":"user","type":null,)" + dated +
             R"(,"timestamp":null,"message":{"model":"a","model":null}})",
         "- undated - 0 0"},
        {R"({"type":"a\u00e9\u20AC\ud83d\ude00\/\n\"","ty\u0070e\ud83d":"half"})", "aé€😀/\n\" undated - 0 0"},
        {R"({"typ\u0065":"\u0061\\"})", "a\\ undated - 0 0"},
        {"{\"text\":\"a tab\tin a string\"}", "refused"},
        {"{\"a long text\":\"with sixteen bytes\x1f before\"}", "refused"},
    };
    JSONLDecoder decoder;
    for (const auto &[line, expected] : rows)
        EXPECT_EQ(described(decoder.decode(line)), expected) << line;
}

TEST(JSONLDecoder, ChecksIgnoredStringsOfEveryLength) {
    const struct {
        std::string text;
        bool valid;
    } endings[] = {{R"(")", true},       {R"(\\")", true},   {R"(\"")", true},    {R"(\\\"")", true},
                   {R"(\u12aF")", true}, {R"(\\u1")", true}, {R"(\\\x")", false}, {R"(\u12g4")", false},
                   {R"(\u123")", false}, {R"(\")", false},   {"\x01\"", false},   {R"()", false}};
    JSONLDecoder decoder;
    for (std::size_t size = 0; size < 40; ++size) {
        for (const auto &[text, valid] : endings) {
            const std::string line = R"({"ignored":")" + std::string(size, 'x') + text + "}";
            EXPECT_EQ(decoder.decode(line).has_value(), valid) << line;
        }
    }
}

} // namespace
} // namespace burnwick
