// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/MetricsForm.h"
#include "model/Clock.h"
#include "model/Timestamp.h"
#include "model/Version.h"
#include "report/ReportChild.h"
#include "support/LogTreeFixture.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <fstream>

#include <sys/stat.h>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;
using test::Outcome;
using test::Program;

TEST(MetricsFormTest, IsPrometheusText) {
    const Instant at = test::at("2026-02-01T12:00:00.900Z");
    Metrics metrics{
        {{{}, "", "b\"\\\n\xff", 0, {1, 2, 3, 4, 5, 6, 7, 1'500'000'000'001}},
         {{}, "", "a", 0, {10, 0, 0, 0, 0, 1, 0, 0}},
         {std::chrono::floor<std::chrono::days>(at), "", "a", 0, {5, 0, 0, 0, 0, 1, 0, 250'000'000'000}}},
        true,
        {{.kind = Limit::Kind::session, .usedPct = 37.5, .resetsAt = at + 1h, .observedAt = at},
         {.kind = Limit::Kind::weeklyScoped, .model = "Opus", .usedPct = 120, .observedAt = at}},
        12.25};
    EXPECT_EQ(metricsForm(metrics, "1.2.3"), R"(# HELP burnwick_build_info Burnwick's version; always 1.
# TYPE burnwick_build_info gauge
burnwick_build_info{version="1.2.3"} 1
# HELP burnwick_tokens_total Tokens, each message counted once.
# TYPE burnwick_tokens_total counter
burnwick_tokens_total{model="a",kind="input"} 15
burnwick_tokens_total{model="a",kind="output"} 0
burnwick_tokens_total{model="a",kind="cache_write_5m"} 0
burnwick_tokens_total{model="a",kind="cache_write_1h"} 0
burnwick_tokens_total{model="a",kind="cache_read"} 0
burnwick_tokens_total{model="b\"\\\n�",kind="input"} 1
burnwick_tokens_total{model="b\"\\\n�",kind="output"} 2
burnwick_tokens_total{model="b\"\\\n�",kind="cache_write_5m"} 3
burnwick_tokens_total{model="b\"\\\n�",kind="cache_write_1h"} 4
burnwick_tokens_total{model="b\"\\\n�",kind="cache_read"} 5
# HELP burnwick_cost_usd_total US dollars at API prices; tokens without a price are not in it.
# TYPE burnwick_cost_usd_total counter
burnwick_cost_usd_total{model="a"} 0.25
burnwick_cost_usd_total{model="b\"\\\n�"} 1.500000000001
# HELP burnwick_messages_total Answers of the model.
# TYPE burnwick_messages_total counter
burnwick_messages_total{model="a"} 2
burnwick_messages_total{model="b\"\\\n�"} 6
# HELP burnwick_unpriced_tokens_total Those of the tokens that have no price.
# TYPE burnwick_unpriced_tokens_total counter
burnwick_unpriced_tokens_total{model="a"} 0
burnwick_unpriced_tokens_total{model="b\"\\\n�"} 7
# HELP burnwick_limit_used_ratio Used share of the account's limit, 1 when it is full.
# TYPE burnwick_limit_used_ratio gauge
burnwick_limit_used_ratio{limit="session"} 0.375
burnwick_limit_used_ratio{limit="weekly_scoped",model="Opus"} 1.2
# HELP burnwick_limit_reset_timestamp_seconds When the limit's window ends.
# TYPE burnwick_limit_reset_timestamp_seconds gauge
burnwick_limit_reset_timestamp_seconds{limit="session"} 1769950800
# HELP burnwick_limit_observed_timestamp_seconds When the used share was observed.
# TYPE burnwick_limit_observed_timestamp_seconds gauge
burnwick_limit_observed_timestamp_seconds{limit="session"} 1769947200
burnwick_limit_observed_timestamp_seconds{limit="weekly_scoped",model="Opus"} 1769947200
# HELP burnwick_burn_tokens_per_minute Input and output tokens a minute, in the logs of the last day.
# TYPE burnwick_burn_tokens_per_minute gauge
burnwick_burn_tokens_per_minute 12.25
)");
    metrics = {{{{}, "/p", "", 0, {}}}};
    const std::string gauges = metricsForm(metrics, "1.2.3");
    EXPECT_NE(gauges.find("# TYPE burnwick_messages gauge\nburnwick_messages{project=\"/p\"} 0\n"),
              std::string::npos);
    EXPECT_EQ(gauges.find("limit"), std::string::npos) << "a head without a value";
}

/// A home with a message of 1,000 input tokens in a project with a secret name.
class MetricsProgram : public testing::Test {
protected:
    MetricsProgram() { add("one", 1'000); }

    void add(const std::string &name, int input) const {
        std::string line = test::usageLine(printTimestamp(SystemClock().now(), 3), input, 0);
        line.insert(1,
                    R"("cwd":"/home/me/secret","sessionId":"secret-session","requestId":")" + name + "\",");
        m_home.add("secret/" + name + ".jsonl", line, SystemClock().now());
    }
    void keepHistory() const {
        test::writeFile(m_home.path() / ".config/burnwick/burnwick.json", R"({"keepHistory": true})");
    }
    Outcome run(const QStringList &options) { return m_program.run(options); }
    /// Returns the value of the only sample that begins so.
    std::string valueOf(const std::string &sample,
                        const QStringList &options = {QStringLiteral("--metrics")}) {
        const Outcome outcome = run(options);
        EXPECT_EQ(outcome.errors, "");
        EXPECT_EQ(outcome.exitCode, 0);
        const std::size_t begin = outcome.output.find('\n' + sample);
        if (begin == std::string::npos)
            return "none of " + outcome.output;
        const std::size_t space = outcome.output.find(' ', begin + 1 + sample.size());
        return outcome.output.substr(space + 1, outcome.output.find('\n', space) - space - 1);
    }

    test::LogHome m_home;
    Program m_program{m_home.path()};
    const std::string m_gauge = R"(burnwick_tokens{model="claude-sonnet-4-5",kind="input")";
    const std::string m_counter = R"(burnwick_tokens_total{model="claude-sonnet-4-5",kind="input")";
};

TEST_F(MetricsProgram, CountersNeverFallAndAHistoryThatComesBackCountsOnce) {
    EXPECT_EQ(valueOf(m_gauge), "1000");
    const auto log = m_home.projects() / "secret/one.jsonl";
    const std::string line = test::bytesOf(log);
    keepHistory();
    EXPECT_EQ(valueOf(m_counter), "1000");
    fs::remove(log);
    EXPECT_EQ(valueOf(m_counter), "1000") << "kept";
    for (const auto &file : fs::directory_iterator(m_home.path() / ".local/share/burnwick")) {
        if (file.path().filename().string().starts_with("ledger"))
            fs::remove(file);
    }
    EXPECT_EQ(valueOf(m_counter), "1000") << "lost";
    EXPECT_EQ(valueOf(R"(burnwick_messages_total{)"), "1");
    add("two", 500);
    EXPECT_EQ(valueOf(m_counter), "1500") << "a new one after the loss";
    test::writeFile(log, line);
    EXPECT_EQ(valueOf(m_counter), "1500") << "restored";

    const QStringList named{QStringLiteral("--metrics"), QStringLiteral("--logs"),
                            QString::fromStdString(m_home.projects())};
    EXPECT_EQ(valueOf(m_gauge, named), "1500") << "of logs that nobody keeps";
}

TEST_F(MetricsProgram, NamesProjectsOnlyIfTheyAreWanted) {
    for (const bool keeps : {false, true}) {
        if (keeps)
            keepHistory();
        const std::string usual = run({QStringLiteral("--metrics")}).output;
        EXPECT_EQ(usual.find("secret"), std::string::npos) << usual;
        EXPECT_EQ(usual.find("project"), std::string::npos) << usual;
        const QStringList hashed{QStringLiteral("--metrics"), QStringLiteral("--metrics-projects")};
        const std::string hashes = run(hashed).output;
        EXPECT_EQ(hashes.find("secret"), std::string::npos) << hashes;
        const std::string label = ",project=\"";
        const std::size_t name = hashes.find(label);
        ASSERT_NE(name, std::string::npos);
        EXPECT_EQ(hashes.find('"', name + label.size()), name + label.size() + 16);
        EXPECT_EQ(run(hashed).output, hashes);
        const QStringList plain{QStringLiteral("--metrics"), QStringLiteral("--metrics-projects=plain")};
        EXPECT_EQ(valueOf((keeps ? m_counter : m_gauge) + R"(,project="/home/me/secret"})", plain), "1000");
    }
    // With another key, the name is another one.
    const QStringList hashed{QStringLiteral("--metrics"), QStringLiteral("--metrics-projects")};
    const std::string before = run(hashed).output;
    fs::remove(m_home.path() / ".local/share/burnwick/counters.sqlite");
    EXPECT_NE(run(hashed).output, before);
}

TEST_F(MetricsProgram, TheFileIsReplacedAsAWholeOrLeftAsItIs) {
    const fs::path file = m_home.path() / "metrics" / "burnwick.prom";
    test::writeFile(file, "old");
    const auto write = [&](const fs::path &path) {
        return run({QStringLiteral("--metrics-file"), QString::fromStdString(path)});
    };
    EXPECT_EQ(write(file).exitCode, 0);
    EXPECT_EQ(test::bytesOf(file), run({QStringLiteral("--metrics")}).output);
    EXPECT_EQ(test::entriesOf(file.parent_path()), 1);
    struct stat status {};
    fs::remove(file);
    EXPECT_EQ(write(file).output, "");
    ASSERT_EQ(::stat(file.c_str(), &status), 0);
    EXPECT_NE(status.st_mode & S_IROTH, 0U) << "node_exporter is another user";

    const Outcome missing = write(m_home.path() / "missing" / "x.prom");
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_EQ(missing.errors, "burnwick-report: cannot write " + (m_home.path() / "missing/x.prom").string() +
                                  ": No such file or directory\n");
    fs::create_directory(m_home.path() / "x.prom");
    EXPECT_EQ(write(m_home.path() / "x.prom").errors, "burnwick-report: cannot write " +
                                                          (m_home.path() / "x.prom").string() +
                                                          ": it is no regular file\n");
    keepHistory();
    const std::string before = test::bytesOf(file);
    const auto counters = m_home.path() / ".local/share/burnwick/counters.sqlite";
    fs::remove(counters);
    fs::create_directory(counters);
    const Outcome failed = write(file);
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_TRUE(failed.errors.starts_with("burnwick-report: " + counters.string() + ": ")) << failed.errors;
    EXPECT_EQ(test::bytesOf(file), before);
}

} // namespace
} // namespace burnwick
