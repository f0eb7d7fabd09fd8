// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "LogFacts.h"

#include <fstream>
#include <stdexcept>
#include <string>

namespace burnwick::bench {

namespace {

/// To be raised when the generator changes: trees of before are then written anew.
constexpr std::string_view heading = "burnwick-bench-logs-1";

std::filesystem::path factsFile(const std::filesystem::path &tree) {
    return tree / "facts.txt";
}

} // namespace

void LogFacts::addUsageLine(std::string_view session, std::string_view model, std::int64_t milliseconds,
                            const SessionTokens &counts) {
    ++usageLines;
    tokens.input += counts.input;
    tokens.output += counts.output;
    tokens.cacheCreation += counts.cacheCreation;
    tokens.cacheRead += counts.cacheRead;

    // FNV-1a, over whole numbers where there are some.
    const auto fold = [this](std::uint64_t value) { lineHash = (lineHash ^ value) * 0x100000001B3U; };
    for (const std::string_view text : {session, model}) {
        for (const char c : text)
            fold(static_cast<unsigned char>(c));
    }
    for (const std::int64_t number :
         {milliseconds, counts.input, counts.output, counts.cacheCreation, counts.cacheRead})
        fold(static_cast<std::uint64_t>(number));
}

std::optional<LogFacts> loadFacts(const std::filesystem::path &tree) {
    std::ifstream file(factsFile(tree));
    std::string found;
    LogFacts facts;
    file >> found >> facts.bytes >> facts.files >> facts.largestFile >> facts.usageLines >>
        facts.tokens.input >> facts.tokens.output >> facts.tokens.cacheCreation >> facts.tokens.cacheRead >>
        facts.lineHash;
    return file && found == heading ? std::optional(facts) : std::nullopt;
}

void saveFacts(const LogFacts &facts, const std::filesystem::path &tree) {
    std::ofstream file(factsFile(tree));
    file << heading << '\n'
         << facts.bytes << ' ' << facts.files << ' ' << facts.largestFile << ' ' << facts.usageLines << '\n'
         << facts.tokens.input << ' ' << facts.tokens.output << ' ' << facts.tokens.cacheCreation << ' '
         << facts.tokens.cacheRead << '\n'
         << facts.lineHash << '\n';
    if (!file.flush())
        throw std::runtime_error("cannot write " + factsFile(tree).string());
}

} // namespace burnwick::bench
