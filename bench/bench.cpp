// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ChildProcess.h"
#include "LogFacts.h"
#include "ResultTable.h"

#include "logs/JSONLParser.h"

#include <simdjson.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

using namespace burnwick;
using namespace burnwick::bench;

namespace {

constexpr double mebibyte = 1 << 20;
constexpr double never = std::numeric_limits<double>::infinity();

constexpr std::string_view parseOnly = "--parse-only";
constexpr std::string_view usage =
    "Usage: burnwick-bench SESSIONS-TREE LONG-LINES-TREE REPETITIONS [BURNWICK-REPORT]\n"
    "The trees are made by burnwick-bench-logs.\n";

struct Options {
    std::filesystem::path sessions;
    std::filesystem::path longLines;
    std::optional<std::filesystem::path> report;
    int repetitions = 1;
};

double secondsOf(const std::function<void()> &work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

/// The least a parser on one thread could do: read every file once and check that it is UTF-8.
class Floor {
public:
    explicit Floor(std::vector<LogFile> files)
        : m_files(std::move(files)) {
        for (const LogFile &file : m_files)
            m_size = std::max<std::size_t>(m_size, file.status.size);
        m_buffer = std::make_unique<char[]>(m_size);
    }

    void run() {
        for (const LogFile &file : m_files) {
            const int descriptor = ::open(file.path.c_str(), O_RDONLY | O_CLOEXEC);
            std::size_t filled = 0;
            ssize_t count = 0;
            while (filled < m_size &&
                   (count = ::read(descriptor, m_buffer.get() + filled, m_size - filled)) > 0)
                filled += static_cast<std::size_t>(count);
            ::close(descriptor);
            if (filled != file.status.size || !simdjson::validate_utf8(m_buffer.get(), filled))
                throw std::runtime_error("cannot read " + file.path.native());
        }
    }

private:
    std::vector<LogFile> m_files;
    std::size_t m_size = 0;
    std::unique_ptr<char[]> m_buffer;
};

/// The tree's facts as the parser sees them.
LogFacts factsOf(const LogHistory &history) {
    LogFacts facts;
    facts.files = static_cast<std::int64_t>(history.files.size());
    for (const LogEntries &entries : history.entries) {
        if (entries == nullptr)
            throw std::runtime_error("a log cannot be read");
        for (const JSONLEntry &entry : *entries) {
            const auto instant = entry.timestamp();
            const SessionTokens &counts = entry.counts();
            facts.addUsageLine(
                entry.sessionId().view(), entry.model().view(),
                instant ? std::chrono::floor<std::chrono::milliseconds>(instant->time_since_epoch()).count()
                        : 0,
                {counts.input, counts.output, counts.cacheCreation, counts.cacheRead});
        }
    }
    return facts;
}

void checkAgainst(LogFacts written, const LogHistory &history) {
    const LogFacts parsed = factsOf(history);
    written.bytes = parsed.bytes;
    written.largestFile = parsed.largestFile;
    if (parsed != written)
        throw std::runtime_error("the parser's entries are not those that were written");
}

LogFacts factsOf(const std::filesystem::path &tree) {
    const auto facts = loadFacts(tree);
    if (!facts)
        throw std::runtime_error(tree.string() + " is no complete tree of logs");
    return *facts;
}

/// Its clocks change within the two months of the sessions.
Calendar benchCalendar() {
    return Calendar::inZone("Europe/Berlin");
}

/// Runs in a process of its own, whose peak of memory is then known.
void parseAndCheck(const std::filesystem::path &tree) {
    checkAgainst(factsOf(tree), *JSONLParser(tree, 2).parseAllEntries());
}

/// Where the report keeps its ledger, beside the sessions.
std::filesystem::path ledgerFolder(const Options &options) {
    return options.sessions.parent_path() / "data";
}

ProcessCost runReport(const Options &options, const std::string &output = "/dev/null") {
    return runProcess({options.report->string(), "--json"},
                      {"HOME=" + options.sessions.string(), "XDG_DATA_HOME=" + ledgerFolder(options).string(),
                       "CLAUDE_CONFIG_DIR="},
                      output);
}

/// Without anything that an earlier run has left.
ProcessCost runFirstReport(const Options &options, const std::string &output = "/dev/null") {
    std::filesystem::remove_all(ledgerFolder(options));
    return runReport(options, output);
}

void checkReport(const LogFacts &written, const std::filesystem::path &json) {
    simdjson::dom::parser parser;
    const simdjson::dom::element history = parser.load(json.string())["history"];
    const simdjson::dom::element tokens = history["totalTokens"];
    const SessionTokens reported{tokens["input"], tokens["output"], tokens["cacheCreation"],
                                 tokens["cacheRead"]};
    if (std::int64_t{history["sessionCount"]} != written.files ||
        std::int64_t{history["messageCount"]} != written.usageLines || reported != written.tokens)
        throw std::runtime_error("the report's figures are not those of the logs");
}

/// Comes first: a child's peak starts with its parent's.
void measureMemory(const Options &options, ResultTable &table) {
    const ProcessCost longLines =
        runProcess({"/proc/self/exe", std::string(parseOnly), options.longLines.string()}, {});
    table.addAtMost("peak memory, one file of 1 MB lines",
                    static_cast<double>(longLines.peakBytes) / mebibyte, 128, "MiB", 1);
    if (!options.report)
        return;
    const LogFacts facts = factsOf(options.sessions);
    const std::filesystem::path json = options.sessions / "report.json";
    const ProcessCost report = runFirstReport(options, json.string());
    checkReport(facts, json);
    table.addAtMost("peak memory, burnwick-report", static_cast<double>(report.peakBytes) / mebibyte,
                    64 + 160 * static_cast<double>(facts.usageLines) / mebibyte, "MiB", 1);
}

/// Repetitions alternate, so that a disturbance from outside meets all the measurements alike; the least time
/// of each counts.
void measureReading(const Options &options, ResultTable &table) {
    const LogFacts facts = factsOf(options.sessions);
    const JSONLParser oneThread(options.sessions, 1);
    const JSONLParser twoThreads(options.sessions, 2);
    Floor floor(allLogFiles(oneThread.folders()));
    checkAgainst(facts, *oneThread.parseAllEntries());
    checkAgainst(facts, *twoThreads.parseAllEntries());

    double floorTime = never, one = never, two = never, first = never, next = never;
    std::uint64_t nextBytes = 0;
    for (int i = 0; i < options.repetitions; ++i) {
        floorTime = std::min(floorTime, secondsOf([&] { floor.run(); }));
        one = std::min(one, secondsOf([&] { static_cast<void>(oneThread.parseAllEntries()); }));
        two = std::min(two, secondsOf([&] { static_cast<void>(twoThreads.parseAllEntries()); }));
        if (!options.report)
            continue;
        first = std::min(first, runFirstReport(options).seconds);
        const ProcessCost report = runReport(options);
        next = std::min(next, report.seconds);
        nextBytes = report.readBytes;
    }
    table.addFigure("reading and checking UTF-8, 1 thread", floorTime * 1000, "ms", 0);
    table.addFigure("parseAllEntries, 1 thread", one * 1000, "ms", 0);
    table.addFigure("parseAllEntries, 2 threads", two * 1000, "ms", 0);
    table.addAtMost("parseAllEntries / reading, 1 thread", one / floorTime, 2.5, "x", 2);
    table.addAtLeast("parseAllEntries, 2 threads faster than 1", one / two, 1.8, "x", 2);
    if (options.report) {
        table.addFigure("burnwick-report --json, nothing known", first * 1000, "ms", 0);
        table.addAtMost("nothing known / reading, 1 thread", first / floorTime, 1.3, "x", 2);
        table.addAtMost("burnwick-report --json, all logs known", next * 1000, 80, "ms", 0);
        table.addAtMost("bytes that it reads",
                        100.0 * static_cast<double>(nextBytes) / static_cast<double>(facts.bytes), 3,
                        "% of the logs", 2);
        table.addAtMost("the ledger's size, a usage line",
                        static_cast<double>(std::filesystem::file_size(ledgerFolder(options) / "burnwick" /
                                                                       "ledger.sqlite")) /
                            static_cast<double>(facts.usageLines),
                        120, "bytes", 0);
    }
}

void measureHistory(const Options &options, ResultTable &table) {
    constexpr std::size_t entryCount = 1'000'000;
    LogHistory history = *JSONLParser(options.sessions, 2).parseAllEntries();
    // The moment after the last session, so that every filter's period has entries.
    const Instant end = history.entries.back()->back().timestamp().value();
    std::vector<JSONLEntry> repeated;
    repeated.reserve(entryCount);
    while (repeated.size() < entryCount) {
        for (const LogEntries &entries : history.entries)
            repeated.insert(repeated.end(), entries->begin(),
                            entries->begin() + static_cast<std::ptrdiff_t>(
                                                   std::min(entries->size(), entryCount - repeated.size())));
    }
    history.entries = {std::make_shared<const EntryList>(std::move(repeated))};
    const Calendar calendar = benchCalendar();

    double slowest = 0;
    for (const TimeFilter filter : allTimeFilters) {
        std::int64_t messages = 0;
        double best = never;
        for (int i = 0; i < options.repetitions; ++i)
            best = std::min(
                best, secondsOf([&] {
                    messages =
                        JSONLParser::computeHistoricalData(history, filter, calendar, end).messageCount;
                }));
        if (filter == TimeFilter::all ? messages != std::int64_t{entryCount}
                                      : messages == 0 || messages >= std::int64_t{entryCount})
            throw std::runtime_error("the history does not count the filter's entries");
        slowest = std::max(slowest, best);
    }
    table.addAtMost("computeHistoricalData, 1 million entries", slowest * 1000, 150, "ms", 1);
    table.addAtMost("computeHistoricalData, per entry", slowest * 1e9 / double{entryCount}, 150, "ns", 1);
}

Options readOptions(std::span<char *> arguments) {
    Options options;
    options.sessions = arguments[0];
    options.longLines = arguments[1];
    options.repetitions = std::max(1, std::atoi(arguments[2]));
    if (arguments.size() > 3)
        options.report = arguments[3];
    return options;
}

} // namespace

int main(int argc, char **argv) {
    const std::span<char *> arguments(argv + 1, argv + argc);
    try {
        if (arguments.size() == 2 && arguments[0] == parseOnly) {
            parseAndCheck(arguments[1]);
            return EXIT_SUCCESS;
        }
        if (arguments.size() < 3) {
            std::cerr << usage;
            return EXIT_FAILURE;
        }
        const Options options = readOptions(arguments);
        ResultTable table;
        measureMemory(options, table);
        measureReading(options, table);
        measureHistory(options, table);
        return table.anyMissed() ? EXIT_FAILURE : EXIT_SUCCESS;
    } catch (const std::exception &error) {
        std::cerr << "burnwick-bench: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
