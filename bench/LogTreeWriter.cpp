// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "LogTreeWriter.h"

#include "Random.h"
#include "SampleText.h"
#include "SessionLines.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <fstream>
#include <numeric>
#include <stdexcept>
#include <string>
#include <vector>

namespace burnwick::bench {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t sessionCount = 480;
constexpr std::int64_t firstMoment = 1'769'904'000'000; ///< 2026-02-01 00:00 UTC, in milliseconds
constexpr std::int64_t wholePeriod = std::int64_t{60} * 24 * 3600 * 1000;
constexpr std::size_t longLine = 1'000'000;

constexpr std::array<std::string_view, 12> projects{
    "atlas",  "billing-api", "website", "notes",  "mobile-app", "infra",
    "parser", "game-jam",    "thesis",  "photos", "chess",      "dotfiles",
};

/// The logs of a session, cut to size and spread over its time.
struct SessionPlan {
    std::uint64_t bytes;
    std::int64_t begin; ///< milliseconds since 1970
    std::int64_t duration;
    bool onlyLongLines;
    bool hasLongLine;
};

class TreeWriter {
public:
    explicit TreeWriter(const fs::path &home)
        : m_logs(home / ".claude" / "projects")
        , m_random(20260201)
        , m_text(m_random) {}

    void writeSession(const SessionPlan &plan) {
        const std::string_view project = m_random.oneOf(projects);
        SessionLines lines(project, m_text, m_random);
        const fs::path directory = m_logs / ("-home-dev-" + std::string(project));
        fs::create_directories(directory);
        const fs::path path = directory / (lines.id() + ".jsonl");
        std::ofstream file(path, std::ios::binary);

        std::uint64_t written = 0;
        std::uint64_t writtenForUser = 0;
        std::int64_t time = plan.begin;
        bool longLineDue = plan.hasLongLine;
        while (written < plan.bytes) {
            const double progress = static_cast<double>(written) / static_cast<double>(plan.bytes);
            time = std::max(time + 1, plan.begin + static_cast<std::int64_t>(
                                                       progress * static_cast<double>(plan.duration)));
            const bool longNow = plan.onlyLongLines || (longLineDue && progress > 0.5);
            longLineDue = longLineDue && !longNow;
            // Half of the bytes are lines of the user.
            const bool forUser = 2 * writtenForUser <= written;
            const std::string log =
                forUser ? userLine(lines, time, written == 0, longNow) : assistantLine(lines, time, longNow);
            file << log;
            written += log.size();
            writtenForUser += forUser ? log.size() : 0;
        }
        file.close();
        if (!file)
            throw std::runtime_error("cannot write " + path.string());
        setTime(path, std::chrono::milliseconds(time));
        ++m_facts.files;
        m_facts.bytes += written;
        m_facts.largestFile = std::max(m_facts.largestFile, written);
    }

    Random &random() { return m_random; }
    [[nodiscard]] const LogFacts &facts() const { return m_facts; }

private:
    std::string userLine(SessionLines &lines, std::int64_t time, bool first, bool isLong) {
        std::string log;
        if (first)
            lines.addPrompt(log, time, 900);
        else
            lines.addToolResult(log, time, isLong ? longLine : m_random.skewed(900, 60'000));
        return log;
    }
    std::string assistantLine(SessionLines &lines, std::int64_t time, bool isLong) {
        std::string log;
        lines.addAssistant(log, time, isLong ? longLine : m_random.skewed(500, 20'000), m_facts);
        return log;
    }
    static void setTime(const fs::path &path, std::chrono::milliseconds time) {
        fs::last_write_time(
            path, std::chrono::file_clock::from_sys(std::chrono::sys_time<std::chrono::milliseconds>(time)));
    }

    fs::path m_logs;
    Random m_random;
    SampleText m_text;
    LogFacts m_facts;
};

void writeSessions(TreeWriter &writer, std::uint64_t bytes) {
    std::vector<std::uint64_t> weights(sessionCount);
    std::generate(weights.begin(), weights.end(), [&writer] { return writer.random().skewed(10, 400); });
    const std::uint64_t sum = std::accumulate(weights.begin(), weights.end(), std::uint64_t{0});
    constexpr std::int64_t spacing = wholePeriod / sessionCount;
    for (std::size_t i = 0; i < sessionCount; ++i) {
        writer.writeSession({.bytes = bytes / sum * weights[i],
                             .begin = firstMoment + static_cast<std::int64_t>(i) * spacing,
                             .duration = spacing * 9 / 10,
                             .onlyLongLines = false,
                             .hasLongLine = i % 60 == 7});
    }
}

void moveTimesToNow(const fs::path &home) {
    std::vector<fs::directory_entry> files;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(home / ".claude")) {
        if (entry.is_regular_file())
            files.push_back(entry);
    }
    fs::file_time_type newest = fs::file_time_type::min();
    for (const fs::directory_entry &file : files)
        newest = std::max(newest, file.last_write_time());
    const auto shift = fs::file_time_type::clock::now() - newest;
    for (const fs::directory_entry &file : files)
        fs::last_write_time(file.path(), file.last_write_time() + shift);
}

} // namespace

LogFacts prepareTree(TreeKind kind, std::uint64_t bytes, const fs::path &directory) {
    if (const auto facts = loadFacts(directory)) {
        moveTimesToNow(directory);
        return *facts;
    }
    if (fs::exists(directory))
        throw std::runtime_error(directory.string() + " exists and is no complete tree of logs; remove it");
    // Written beside its place and moved there once complete.
    const fs::path unfinished = directory.string() + ".unfinished";
    fs::remove_all(unfinished);
    TreeWriter writer(unfinished);
    if (kind == TreeKind::sessions)
        writeSessions(writer, bytes);
    else
        writer.writeSession({.bytes = bytes,
                             .begin = firstMoment,
                             .duration = wholePeriod,
                             .onlyLongLines = true,
                             .hasLongLine = false});
    saveFacts(writer.facts(), unfinished);
    fs::rename(unfinished, directory);
    moveTimesToNow(directory);
    return writer.facts();
}

void makeRecent(const fs::path &directory) {
    const auto now = fs::file_time_type::clock::now();
    for (const auto &file : fs::recursive_directory_iterator(directory / ".claude" / "projects")) {
        if (file.is_regular_file())
            fs::last_write_time(file.path(), now);
    }
}

} // namespace burnwick::bench
