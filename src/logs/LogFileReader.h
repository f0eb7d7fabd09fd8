// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/BlockReader.h"
#include "logs/JSONLDecoder.h"
#include "logs/JSONLEntry.h"

#include <filesystem>
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

    explicit LogFileReader(LineSelection selection, std::size_t blockSize = defaultBlockSize);

    /// The file's entries in line order; none when it is not a regular file, cannot be read to its end, or is
    /// not UTF-8 throughout.
    [[nodiscard]] std::vector<JSONLEntry> readFile(const std::filesystem::path &file,
                                                   InternedString sessionId);
    /// The same for any stream of bytes.
    [[nodiscard]] std::vector<JSONLEntry> read(const BlockReader::Read &source, InternedString sessionId);

private:
    // Both are false when they meet a byte that is not UTF-8.
    bool takeBlock(std::string_view block, InternedString sessionId, std::vector<JSONLEntry> &entries);
    bool takeLine(std::string_view line, InternedString sessionId, std::vector<JSONLEntry> &entries);

    LineSelection m_selection;
    JSONLDecoder m_decoder;
    BlockReader m_blocks;
};

} // namespace burnwick
