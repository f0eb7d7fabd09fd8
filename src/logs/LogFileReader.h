// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "async/StoppableThread.h"
#include "logs/BlockReader.h"
#include "logs/JSONLDecoder.h"
#include "logs/LogHistory.h"

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

namespace burnwick {

/// Which lines of a file become entries.
enum class LineSelection { all, usageOnly };

/// Reads log files one after the other, reusing its buffers. Memory is one block and the longest line,
/// whatever the size of the file. For one thread.
class LogFileReader {
public:
    /// Small enough to stay in a core's cache between reading, checking and decoding.
    static constexpr std::size_t defaultBlockSize = std::size_t{256} << 10U;
    /// Far longer than any line of Claude Code; limits the memory for a file that is no log at all.
    static constexpr std::size_t defaultLongestLine = std::size_t{256} << 20U;

    explicit LogFileReader(LineSelection selection, std::size_t blockSize = defaultBlockSize,
                           std::size_t longestLine = defaultLongestLine);

    /// Returns the file's entries in line order with the session that its name gives, the extension excluded;
    /// an empty list if it is not UTF-8 throughout. Null if it is not a regular file, cannot be read to its
    /// end, a stop is requested meanwhile, or memory is short. Lines longer than the longest are ignored.
    [[nodiscard]] LogEntries readFile(const std::filesystem::path &file, const StopRequest &stop = {});
    /// The same for any stream of bytes, without sessions; nullopt instead of null. Throws std::bad_alloc
    /// when memory is short; the next stream can be read all the same.
    [[nodiscard]] std::optional<std::vector<JSONLEntry>> read(const BlockReader::Read &source,
                                                              const StopRequest &stop = {});

private:
    void readLines(std::string_view lines, std::vector<JSONLEntry> &entries);

    LineSelection m_selection;
    std::size_t m_longestLine;
    JSONLDecoder m_decoder;
    BlockReader m_blocks;
};

/// Reads the usage lines of the files whose entries are null, on up to `threads` threads. After a stop
/// request entries stay null. Files that are not regular ones are not opened.
void readMissingEntries(LogHistory &history, unsigned threads, const StopRequest &stop);

} // namespace burnwick
