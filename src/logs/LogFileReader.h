// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/BlockReader.h"
#include "logs/JSONLDecoder.h"
#include "logs/JSONLEntry.h"

#include <stop_token>
#include <string>
#include <vector>

namespace burnwick {

/// Which lines of a file become entries.
enum class LineSelection { all, usageOnly };

/// Reads log files one after the other, keeping its buffers. Memory is one block and the longest line,
/// whatever the size of the file. For one thread.
class LogFileReader {
public:
    /// Small enough to stay in a core's cache between reading, checking and parsing.
    static constexpr std::size_t defaultBlockSize = std::size_t{256} << 10U;

    /// Far beyond any line of Claude Code; bounds the memory for a file that is no log at all.
    static constexpr std::size_t defaultLongestLine = std::size_t{256} << 20U;

    explicit LogFileReader(LineSelection selection, std::size_t blockSize = defaultBlockSize,
                           std::size_t longestLine = defaultLongestLine);

    /// The file's entries in line order, without sessions; none when it is not a regular file, cannot be read
    /// to its end, is not UTF-8 throughout, or a stop is requested meanwhile. A line longer than the longest
    /// is none. Throws std::bad_alloc when memory is short; the next file can be read all the same.
    [[nodiscard]] std::vector<JSONLEntry> readFile(const std::string &file, const std::stop_token &stop = {});
    /// The same for any stream of bytes.
    [[nodiscard]] std::vector<JSONLEntry> read(const BlockReader::Read &source,
                                               const std::stop_token &stop = {});

private:
    // Both are false when they meet a byte that is not UTF-8.
    bool takeBlock(std::string_view block, std::vector<JSONLEntry> &entries);
    bool takeLine(std::string_view line, std::vector<JSONLEntry> &entries);

    LineSelection m_selection;
    std::size_t m_longestLine;
    JSONLDecoder m_decoder;
    BlockReader m_blocks;
};

} // namespace burnwick
