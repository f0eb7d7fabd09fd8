// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "async/StoppableThread.h"
#include "logs/BlockReader.h"
#include "logs/JSONLDecoder.h"
#include "logs/ReadingStore.h"

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
    /// no entries if it is not UTF-8 throughout. Null if it is not a regular file, cannot be read to its end,
    /// a stop is requested meanwhile, or memory is short. Lines longer than the longest are ignored. Where
    /// the file has only grown since the former reading, only its new lines are read; see hasGrown().
    [[nodiscard]] std::optional<FileReading> readFile(const std::filesystem::path &file,
                                                      const FileReading *former = nullptr,
                                                      Watch watch = Watch::none,
                                                      const StopRequest &stop = {});

    struct Lines {
        std::vector<JSONLEntry> entries;   ///< without sessions
        std::vector<UsageDetails> details; ///< of each entry
        std::uint64_t wholeBytes = 0;      ///< up to the last line feed
        std::size_t wholeEntries = 0;      ///< the number of entries in these bytes
        bool isUtf8 = true;                ///< otherwise all others are empty
    };
    /// Returns the lines of any stream of bytes; null if it cannot be read to its end or a stop is requested
    /// meanwhile. Throws std::bad_alloc when memory is short; the next stream can be read all the same.
    [[nodiscard]] std::optional<Lines> read(const BlockReader::Read &source, const StopRequest &stop = {});

private:
    void readLines(std::string_view bytes, Lines &lines);

    LineSelection m_selection;
    std::size_t m_longestLine;
    JSONLDecoder m_decoder;
    BlockReader m_blocks;
};

/// Reads the usage lines of those files whose entries are null or whose position is not that of the file's
/// present contents, on up to `threads` threads; entries that stay equal are not replaced. Gives each reading
/// to the store unless it is null. After a stop request entries may be missing. Files that are not regular
/// ones are not opened.
void readMissingEntries(LogHistory &history, unsigned threads, Watch watch, ReadingStore *store,
                        const StopRequest &stop);

} // namespace burnwick
