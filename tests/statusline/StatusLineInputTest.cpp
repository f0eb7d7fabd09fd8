// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "statusline/StatusLineInput.h"

#include "json/JsonReading.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace burnwick {
namespace {

using namespace std::chrono_literals;

const Instant now(1'795'000'000s); // 2026-11-18T11:06:40Z

/// Such as "session 67.5 +7200", with the seconds until the reset; "-" without one.
std::string textOf(const std::vector<Limit> &limits) {
    std::ostringstream text;
    for (const Limit &limit : limits) {
        EXPECT_EQ(limit.observedAt, now);
        EXPECT_EQ(limit.source, Limit::Source::statusLine);
        text << (text.tellp() > 0 ? "; " : "") << nameOf(limit.kind)
             << (limit.model.empty() ? "" : ":" + limit.model) << ' ' << limit.usedPct;
        if (limit.resetsAt)
            text << " +" << std::chrono::duration<double>(*limit.resetsAt - now).count();
        else
            text << " -";
    }
    return text.str();
}

std::vector<Limit> decode(const std::string &limits) {
    return decodeStatusLine(QByteArray::fromStdString(R"({"session_id":"x","rate_limits":)" + limits + "}"),
                            now);
}

TEST(StatusLineInput, EachMalformedPartCostsItselfAlone) {
    const struct {
        const char *what;
        std::string limits;
        std::string decoded;
    } rows[] = {
        {"all parts",
         R"({"seven_day": {"used_percentage": 12, "resets_at": 1795300000},
             "five_hour": {"used_percentage": 67.5, "resets_at": 1795007200.5},
             "spend_limit": {"used_percentage": 50, "resets_at": 1795007200},
             "model_scoped": [{"display_name": "B", "utilization": 3, "resets_at": "2026-11-19T11:06:40Z"},
                              {"display_name": "A", "utilization": 0.5, "resets_at": 1795000060}]})",
         "session 67.5 +7200.5; weekly 12 +300000; weekly_scoped:B 3 +86400; weekly_scoped:A 0.5 +60"},
        {"none", "{}", ""},
        {"null", "null", ""},
        {"an array", "[1]", ""},
        {"windows of other types", R"({"five_hour": [], "seven_day": "x", "model_scoped": {}})", ""},
        {"one window", R"({"seven_day": {"used_percentage": 0}})", "weekly 0 -"},
        {"a text for a percentage",
         R"({"five_hour": {"used_percentage": "5"}, "seven_day": {"used_percentage": 6}})", "weekly 6 -"},
        {"below 0", R"({"five_hour": {"used_percentage": -0.1}})", ""},
        {"above 100", R"({"five_hour": {"used_percentage": 100.4}})", "session 100.4 -"},
        {"huge", R"({"five_hour": {"used_percentage": 1e300}})", ""},
        {"the other percentage", R"({"five_hour": {"utilization": 5}})", ""},
        {"a reset that is over", R"({"five_hour": {"used_percentage": 5, "resets_at": 1795000000}})", ""},
        {"a reset of 1970", R"({"five_hour": {"used_percentage": 5, "resets_at": 0}})", ""},
        {"a reset in ten years", R"({"five_hour": {"used_percentage": 5, "resets_at": 2110000000}})",
         "session 5 -"},
        {"a reset in six days", R"({"five_hour": {"used_percentage": 5, "resets_at": 1795518400}})",
         "session 5 -"},
        {"an endless reset", R"({"five_hour": {"used_percentage": 5, "resets_at": 1e300}})", "session 5 -"},
        {"a reset of another type", R"({"five_hour": {"used_percentage": 5, "resets_at": {}}})",
         "session 5 -"},
        {"a reset in words", R"({"five_hour": {"used_percentage": 5, "resets_at": "soon"}})", "session 5 -"},
        {"scoped limits without a name, and twice",
         R"({"model_scoped": [1, null, {"utilization": 1}, {"display_name": "", "utilization": 2},
             {"display_name": 3, "utilization": 3}, {"display_name": "A", "utilization": 4},
             {"display_name": "A", "utilization": 5}, {"display_name": "B", "used_percentage": 6}]})",
         "weekly_scoped:A 4 -"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(textOf(decode(row.limits)), row.decoded) << row.what;

    std::string many;
    for (int i = 0; i < 1000; ++i)
        many += (i > 0 ? ", " : "") + std::string(R"({"utilization": 1, "display_name": ")") +
                std::to_string(i) + "\"}";
    EXPECT_EQ(decode(R"({"model_scoped": [)" + many + "]}").size(), 32U);
}

TEST(StatusLineInput, OtherInputThanAnObjectIsRejected) {
    const std::string inputs[] = {"",
                                  "garbage",
                                  "[]",
                                  "5",
                                  R"({"rate_limits": {"five_hour")",
                                  R"({"rate_limits": {"five_hour": {"used_percentage": NaN}}})",
                                  "{\"a\": \"\xff\xfe\"}",
                                  std::string(100'000, '[')};
    for (const std::string &input : inputs)
        EXPECT_THROW(static_cast<void>(decodeStatusLine(QByteArray::fromStdString(input), now)), DecodeError)
            << input.substr(0, 60);
}

} // namespace
} // namespace burnwick
