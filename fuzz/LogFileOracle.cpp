// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "fuzz/Oracles.h"
#include "logs/JSONLDecoder.h"
#include "logs/LogFileReader.h"

#include <QUtf8StringView>

#include <algorithm>
#include <cstring>
#include <vector>

namespace burnwick::fuzz {

namespace {

using Entries = std::vector<JSONLEntry>;

/// The entries of the file read as a whole, line by line.
Entries naiveEntries(std::string_view file, LineSelection selection, std::size_t longestLine) {
    Entries entries;
    static JSONLDecoder decoder;
    if (!QUtf8StringView(file.data(), static_cast<qsizetype>(file.size())).isValidUtf8())
        return entries;
    while (!file.empty()) {
        const std::size_t end = std::min(file.find('\n'), file.size());
        const std::string_view line = file.substr(0, end);
        file.remove_prefix(std::min(end + 1, file.size()));
        if (line.size() > longestLine)
            continue;
        const auto entry = decoder.decode(line);
        if (entry && (selection == LineSelection::all || entry->isUsageLine()))
            entries.push_back(*entry);
    }
    return entries;
}

/// The entries that the reader returns for the bytes in pieces.
Entries entriesInBlocks(std::string_view file, LineSelection selection, std::size_t longestLine,
                        std::size_t blockSize, std::size_t piece) {
    const auto source = [&](char *data, std::size_t size) {
        const std::size_t count = std::min({size, piece, file.size()});
        std::memcpy(data, file.data(), count);
        file.remove_prefix(count);
        return static_cast<ssize_t>(count);
    };
    return LogFileReader(selection, blockSize, longestLine).read(source).value().entries;
}

} // namespace

const char *checkLogFile(std::string_view input) {
    constexpr std::size_t whole = LogFileReader::defaultBlockSize;
    constexpr std::size_t longest = LogFileReader::defaultLongestLine;
    constexpr struct {
        std::size_t block, piece;
    } sizes[] = {{1, 1}, {3, 3}, {7, 2}, {150, 5}, {400, 400}, {whole, whole}};
    // The short limit is met by common lines.
    for (const std::size_t longestLine : {longest, std::size_t{100}}) {
        const Entries expected = naiveEntries(input, LineSelection::all, longestLine);
        for (const auto &size : sizes) {
            require(entriesInBlocks(input, LineSelection::all, longestLine, size.block, size.piece) ==
                        expected,
                    "blocks of any size give the same entries");
        }
    }
    const Entries counted = naiveEntries(input, LineSelection::usageOnly, longest);
    require(entriesInBlocks(input, LineSelection::usageOnly, longest, whole, whole) == counted,
            "the line filter loses no usage line");
    return counted.empty() ? "nothing" : "counted";
}

} // namespace burnwick::fuzz
