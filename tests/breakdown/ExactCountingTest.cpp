// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "breakdown/ExactCounting.h"

#include "breakdown/UsageCells.h"
#include "breakdown/UsageLine.h"
#include "logs/JSONLParser.h"
#include "support/LogTreeFixture.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <tuple>

namespace burnwick {
namespace {

using test::UsageLine;
using namespace std::chrono_literals;

const Instant now = test::at("2026-08-20T12:00:00.000Z");

/// Adds the texts as logs, each a minute younger than the one before.
std::shared_ptr<const LogHistory> historyOf(const test::LogHome &home, const std::vector<std::string> &logs) {
    for (std::size_t i = 0; i < logs.size(); ++i)
        home.add("p/" + std::string(1, static_cast<char>('a' + i)) + ".jsonl", logs[i],
                 now - 1h + std::chrono::minutes(i));
    return JSONLParser(home.path(), 1).parseAllEntries();
}

/// Compares the cells of single messages, and those of whole days and projects, with the sums of all
/// messages.
void expectSums(const BreakdownSums &sums) {
    const UsageBreakdown breakdown = sums.within(TimeFilter::all, now, 0);
    for (const bool areSingle : {false, true}) {
        std::map<std::string, UsageCell> models;
        std::int64_t messages = 0;
        const auto since = areSingle ? std::chrono::sys_days::min() : std::chrono::sys_days::max();
        for (const UsageCell &cell : usageCells(sums, !areSingle, since)) {
            models[cell.model].add(cell.counts);
            messages += cell.counts[UsageCell::messages];
            EXPECT_EQ(cell.message != 0, areSingle && cell.day);
        }
        EXPECT_EQ(messages, breakdown.history.messageCount);
        ASSERT_EQ(models.size(), breakdown.models.size());
        for (const ModelUsage &model : breakdown.models) {
            const auto &[input, output, write5m, write1h, read, count, unpriced, cost] =
                models[model.name].counts;
            EXPECT_EQ((std::tuple(input, output, write5m, write1h, read, unpriced, dollarsOf(cost))),
                      (std::tuple(model.input, model.output, model.cacheWrite5m, model.cacheWrite1h,
                                  model.cacheRead, model.total.unpriced, model.total.cost)));
        }
    }
}

UsageBreakdown breakdownOf(const std::vector<std::string> &logs, TimeFilter filter = TimeFilter::all) {
    const test::LogHome home;
    ExactCounting counting(PriceTable::ofProduct());
    const auto sums = counting.sums(*historyOf(home, logs), Calendar::inZone("Etc/UTC"));
    expectSums(*sums);
    return sums->within(filter, now, 0);
}

std::string textOf(const UsageBreakdown &breakdown) {
    std::ostringstream text;
    text << breakdown.history.messageCount << " messages";
    for (const ModelUsage &model : breakdown.models)
        text << "; " << model.name << ' ' << model.input << '/' << model.output << '/' << model.cacheWrite5m
             << '/' << model.cacheWrite1h << '/' << model.cacheRead << '/' << model.webSearches;
    for (const auto &[day, tokens] : breakdown.days)
        text << "; day " << static_cast<unsigned>(std::chrono::year_month_day(day).day()) << ": "
             << tokens.tokens;
    return text.str();
}

std::string replaced(std::string text, const std::string &from, const std::string &to) {
    return text.replace(text.find(from), from.size(), to);
}

TEST(ExactCounting, CountsEachMessageOnce) {
    const std::string cacheWrites =
        R"(,"cache_creation_input_tokens":100,"cache_creation":{"ephemeral_5m_input_tokens":30,"ephemeral_1h_input_tokens":50})";
    const std::string flatZero = replaced(cacheWrites, "100", "0");
    const std::string advisor =
        R"(,"iterations":[{"type":"message"},{"type":"advisor_message","model":"claude-haiku-4-5",)"
        R"("usage":{"input_tokens":7,"output_tokens":3,"cache_creation_input_tokens":2,"cache_read_input_tokens":1}}])";
    const std::string flatAdvisor = replaced(replaced(advisor, R"("usage":{)", ""), "}}]", "}]");
    const struct {
        const char *what;
        std::vector<std::string> logs;
        const char *expected;
    } rows[] = {
        {"a placeholder, then the final count",
         {UsageLine{.output = 1}.json() + UsageLine{.output = 9}.json()},
         "1 messages; claude-opus-5 90/9/0/0/0/0; day 1: 99"},
        {"a line with fewer tokens at the end, of another model",
         {UsageLine{.output = 9}.json() + UsageLine{.output = 8, .model = "x"}.json()},
         "1 messages; claude-opus-5 90/9/0/0/0/0; day 1: 99"},
        {"of equals the last whole line",
         {UsageLine{.output = 9}.json() + UsageLine{.output = 9, .model = "x"}.json()},
         "1 messages; x 90/9/0/0/0/0; day 1: 99"},
        {"of equals in other logs the last one in the order of the files",
         {UsageLine{.model = "x"}.json(), UsageLine{.model = "y"}.json(), UsageLine{.model = "z"}.json()},
         "1 messages; z 10/1/0/0/0/0; day 1: 11"},
        {"the most tokens in an older log",
         {UsageLine{.output = 2, .model = "x"}.json(), UsageLine{}.json()},
         "1 messages; x 20/2/0/0/0/0; day 1: 22"},
        {"at the time of the first line",
         {UsageLine{}.json() + UsageLine{.output = 2, .time = "2026-08-02T00:00:00.000Z"}.json()},
         "1 messages; claude-opus-5 20/2/0/0/0/0; day 1: 22"},
        {"at the time of the first line in another log",
         {UsageLine{}.json(), UsageLine{.output = 2, .time = "2026-08-02T00:00:00.000Z"}.json()},
         "1 messages; claude-opus-5 20/2/0/0/0/0; day 1: 22"},
        {"two requests",
         {UsageLine{}.json() + UsageLine{.request = "r2"}.json()},
         "2 messages; claude-opus-5 20/2/0/0/0/0; day 1: 22"},
        {"two messages of a request",
         {UsageLine{}.json() + UsageLine{.message = "m2"}.json()},
         "2 messages; claude-opus-5 20/2/0/0/0/0; day 1: 22"},
        {"a session copied under another name",
         {UsageLine{}.json(), UsageLine{.session = "s2"}.json()},
         "1 messages; claude-opus-5 10/1/0/0/0/0; day 1: 11"},
        {"without a request: by session",
         {UsageLine{.request = ""}.json() + UsageLine{.request = ""}.json(),
          UsageLine{.request = ""}.json() + UsageLine{.request = "", .session = "s2"}.json()},
         "2 messages; claude-opus-5 20/2/0/0/0/0; day 1: 22"},
        {"without an identifier each line",
         {UsageLine{.message = ""}.json() + UsageLine{.message = ""}.json()},
         "2 messages; claude-opus-5 20/2/0/0/0/0; day 1: 22"},
        {"a replay in a side chain",
         {UsageLine{}.json(), UsageLine{.output = 5, .request = "r2", .isSidechain = true}.json()},
         "1 messages; claude-opus-5 10/1/0/0/0/0; day 1: 11"},
        {"a replay in a side chain of the same log, before the message",
         {UsageLine{.output = 5, .request = "r2", .isSidechain = true}.json() + UsageLine{}.json()},
         "1 messages; claude-opus-5 10/1/0/0/0/0; day 1: 11"},
        {"a replay of a message that a resumed session copied",
         {UsageLine{}.json(), UsageLine{.request = "r2", .isSidechain = true}.json(),
          UsageLine{.session = "s2"}.json()},
         "1 messages; claude-opus-5 10/1/0/0/0/0; day 1: 11"},
        {"a main chain's line, and the same in a side chain's log",
         {UsageLine{}.json(), UsageLine{.isSidechain = true}.json()},
         "1 messages; claude-opus-5 10/1/0/0/0/0; day 1: 11"},
        {"both in one log, and a replay under another request",
         {UsageLine{}.json() + UsageLine{.output = 2, .isSidechain = true}.json(),
          UsageLine{.output = 5, .request = "r2", .isSidechain = true}.json()},
         "1 messages; claude-opus-5 20/2/0/0/0/0; day 1: 22"},
        {"counts of 32 bits",
         {UsageLine{.moreUsage = R"(,"cache_read_input_tokens":4294967295)"}.json()},
         "1 messages; claude-opus-5 10/1/0/0/4294967295/0; day 1: 4294967306"},
        {"a side chain of another session",
         {UsageLine{}.json(), UsageLine{.request = "r2", .session = "s2", .isSidechain = true}.json()},
         "2 messages; claude-opus-5 20/2/0/0/0/0; day 1: 22"},
        {"two side chains",
         {UsageLine{.isSidechain = true}.json(), UsageLine{.request = "r2", .isSidechain = true}.json()},
         "2 messages; claude-opus-5 20/2/0/0/0/0; day 1: 22"},
        {"no answers of a model",
         {UsageLine{.model = "<synthetic>"}.json() +
          UsageLine{.message = "m2", .moreMembers = R"(,"isApiErrorMessage":true)"}.json()},
         "0 messages"},
        {"cache writes beyond the nested ones are for five minutes",
         {UsageLine{.moreUsage = cacheWrites}.json()},
         "1 messages; claude-opus-5 10/1/50/50/0/0; day 1: 111"},
        {"nested cache writes beside a flat 0",
         {UsageLine{.moreUsage = flatZero}.json()},
         "1 messages; claude-opus-5 10/1/30/50/0/0; day 1: 91"},
        {"web searches, and counts beyond 32 bits",
         {UsageLine{
             .moreUsage =
                 R"(,"cache_read_input_tokens":5000000000,"server_tool_use":{"web_search_requests":3})"}
              .json()},
         "1 messages; claude-opus-5 10/1/0/0/5000000000/3; day 1: 5000000011"},
        {"implausible nested counts",
         {UsageLine{
             .moreUsage =
                 R"(,"cache_creation":{"ephemeral_5m_input_tokens":9223372036854775807,"ephemeral_1h_input_tokens":-1})"}
              .json()},
         "1 messages; claude-opus-5 10/1/0/0/0/0; day 1: 11"},
        {"advisors in addition, once",
         {UsageLine{.moreUsage = advisor}.json() + UsageLine{.moreUsage = advisor}.json(),
          UsageLine{.moreUsage = advisor}.json()},
         "1 messages; claude-haiku-4-5 7/3/2/0/1/0; claude-opus-5 10/1/0/0/0/0; day 1: 24"},
        {"an advisor without a usage of its own",
         {UsageLine{.moreUsage = flatAdvisor}.json()},
         "1 messages; claude-haiku-4-5 7/3/2/0/1/0; claude-opus-5 10/1/0/0/0/0; day 1: 24"},
        {"advisors of the line that counts alone",
         {UsageLine{.moreUsage = advisor}.json() + UsageLine{.output = 2}.json() +
          UsageLine{.moreUsage = advisor}.json()},
         "1 messages; claude-opus-5 20/2/0/0/0/0; day 1: 22"},
        {"advisors at the time of the message's first line",
         {UsageLine{.moreUsage = advisor}.json() +
          UsageLine{.time = "2026-08-02T00:00:00.000Z", .moreUsage = advisor}.json()},
         "1 messages; claude-haiku-4-5 7/3/2/0/1/0; claude-opus-5 10/1/0/0/0/0; day 1: 24"},
        {"a negative count",
         {UsageLine{
             .moreUsage =
                 R"(,"cache_creation_input_tokens":-9223372036854775808,"cache_creation":{"ephemeral_5m_input_tokens":1})"}
              .json()},
         "1 messages; claude-opus-5 10/1/1/0/0/0; day 1: 12"},
        {"without a time", {UsageLine{.time = ""}.json()}, "1 messages; claude-opus-5 10/1/0/0/0/0"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(textOf(breakdownOf(row.logs)), row.expected) << row.what;
}

TEST(ExactCounting, PricesMessagesAndNamesTokensWithoutPrice) {
    const struct {
        const char *what;
        UsageLine line;
        double cost;
        std::int64_t unpriced;
    } rows[] = {
        {"by the list", {.output = 1'000'000}, 75, 0},
        {"fast", {.output = 1'000'000, .moreUsage = R"(,"speed":"fast")"}, 150, 0},
        {"batch", {.output = 1'000'000, .moreUsage = R"(,"service_tier":"batch")"}, 37.5, 0},
        {"in the United States", {.output = 1'000'000, .moreUsage = R"(,"inference_geo":"us")"}, 82.5, 0},
        {"searches", {.output = 0, .moreUsage = R"(,"server_tool_use":{"web_search_requests":3})"}, 0.03, 0},
        {"by the line's cost", {.model = "x", .moreMembers = R"(,"costUSD":1.5)"}, 1.5, 0},
        {"a negative cost of the line", {.output = 1'000'000, .moreMembers = R"(,"costUSD":-1.5)"}, 75, 0},
        {"an unknown model", {.model = "x"}, 0, 11},
        {"before the list's first day", {.time = "2026-07-01T00:00:00.000Z"}, 0, 11},
        {"without a time", {.time = ""}, 0, 11},
    };
    for (const auto &row : rows) {
        const UsageBreakdown breakdown = breakdownOf({row.line.json()});
        EXPECT_DOUBLE_EQ(breakdown.total.cost, row.cost) << row.what;
        EXPECT_EQ(breakdown.total.unpriced, row.unpriced) << row.what;
        EXPECT_EQ(breakdown.models.at(0).total, breakdown.total) << row.what;
        EXPECT_EQ(breakdown.projects.at(0).total, breakdown.total) << row.what;
    }
}

TEST(ExactCounting, SumsProjectsByFolder) {
    const auto projectsOf = [](TimeFilter filter) {
        std::ostringstream text;
        const UsageBreakdown breakdown = breakdownOf(
            {UsageLine{}.json() + UsageLine{.output = 2, .folder = "/work/atlas/src"}.json() +
                 UsageLine{.message = "m2", .time = "2026-08-19T10:00:00.000Z", .folder = "/work/atlas2"}
                     .json(),
             UsageLine{.message = "m3", .request = "", .session = "s2", .folder = ""}.json() +
                 UsageLine{.message = "m4", .session = "s3", .model = "x", .time = "2026-08-18T23:00:00.000Z"}
                     .json()},
            filter);
        for (const ProjectUsage &project : breakdown.projects) {
            text << project.path << ' ' << project.sessions << ' ' << project.total.tokens << '-'
                 << project.total.unpriced << ' ' << project.loggedTokens << ' '
                 << (project.lastUsed ? (*project.lastUsed - test::at("2026-08-01T00:00:00.000Z")) / 1h : -1);
            for (const auto &[day, tokens] : project.days)
                text << " d" << static_cast<unsigned>(std::chrono::year_month_day(day).day()) << ':'
                     << tokens.tokens << '/' << project.loggedDays.at(day);
            text << '\n';
        }
        return text.str();
    };
    EXPECT_EQ(projectsOf(TimeFilter::all), " 1 11-0 11 10 d1:11/11\n"
                                           "/work/atlas 2 33-11 44 431 d1:22/33 d18:11/11\n"
                                           "/work/atlas2 1 11-0 11 442 d19:11/11\n");
    EXPECT_EQ(projectsOf(TimeFilter::sevenDays), "/work/atlas 1 11-11 11 431 d18:11/11\n"
                                                 "/work/atlas2 1 11-0 11 442 d19:11/11\n");
}

TEST(ExactCounting, RatesTheSessionBetweenItsFirstAndLastMessage) {
    const test::LogHome home;
    ExactCounting counting(PriceTable::ofProduct());
    const auto history = historyOf(
        home, {UsageLine{.message = "m2", .output = 1'000'000, .time = "2026-08-01T10:10:00.000Z"}.json(),
               UsageLine{.output = 1, .time = "2026-08-01T10:20:00.000Z"}.json() +
                   UsageLine{.message = "m3", .model = "x", .time = "2026-08-01T10:00:00.000Z"}.json()});
    const SessionFigures session = counting.session(history->entries);
    EXPECT_EQ(session.tokens.output, 1'000'002);
    EXPECT_EQ(session.unpricedTokens, 11);
    EXPECT_NEAR(session.cost, 75, 1e-3);
    EXPECT_NEAR(session.burnRateTokensPerMin, 550'001.1, 1e-6);
    EXPECT_NEAR(session.projectedTodayCost, session.cost / 20 * 1440, 1e-9);
    EXPECT_NEAR(session.projectedMonthlyCost, session.projectedWeeklyCost / 7 * 30, 1e-9);
    EXPECT_EQ(counting.session(std::span(history->entries).first(1)).burnRateTokensPerMin, 0);
}

} // namespace
} // namespace burnwick
