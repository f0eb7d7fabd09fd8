// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/LogFileReader.h"

#include "logs/LineFilter.h"

#include <simdjson.h>

#include <algorithm>
#include <cerrno>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace burnwick {

namespace {

/// Closes the descriptor when destroyed.
class OpenFile {
public:
    // Not blocking: whatever has taken the file's place since it was listed, opening it must not wait.
    explicit OpenFile(const std::string &path)
        : m_descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {}
    ~OpenFile() {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;

    /// None for anything but a regular file.
    [[nodiscard]] std::optional<std::size_t> size() const {
        struct stat status {};
        if (m_descriptor < 0 || ::fstat(m_descriptor, &status) != 0 || !S_ISREG(status.st_mode))
            return std::nullopt;
        return static_cast<std::size_t>(std::max<off_t>(status.st_size, 0));
    }
    ssize_t read(char *data, std::size_t size) const {
        ssize_t count = 0;
        do {
            count = ::read(m_descriptor, data, size);
        } while (count < 0 && errno == EINTR);
        return count;
    }

private:
    int m_descriptor;
};

bool isBlank(std::string_view line) {
    return line.find_first_not_of(" \t\r") == std::string_view::npos;
}

} // namespace

LogFileReader::LogFileReader(LineSelection selection, std::size_t blockSize, std::size_t longestLine)
    : m_selection(selection)
    , m_longestLine(longestLine)
    , m_blocks(blockSize, JSONLDecoder::padding, longestLine) {}

std::vector<JSONLEntry> LogFileReader::readFile(const std::string &file, const std::stop_token &stop) {
    const OpenFile open(file);
    const auto size = open.size();
    if (!size)
        return {};
    // No further than it reached when it was opened: a file that grows as fast as it is read has no end, nor
    // have some of the kernel's.
    std::size_t left = *size;
    const auto source = [&open, &left](char *data, std::size_t room) {
        const ssize_t count = open.read(data, std::min(room, left));
        left -= static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        return count;
    };
    return read(source, stop);
}

std::vector<JSONLEntry> LogFileReader::read(const BlockReader::Read &source, const std::stop_token &stop) {
    std::vector<JSONLEntry> entries;
    const bool complete = m_blocks.readAll(
        [&](char *data, std::size_t size) { return stop.stop_requested() ? -1 : source(data, size); },
        [&](std::string_view block) { return takeBlock(block, entries); },
        [](std::string_view piece) { return simdjson::validate_utf8(piece); });
    if (!complete)
        entries.clear();
    return entries;
}

bool LogFileReader::takeBlock(std::string_view block, std::vector<JSONLEntry> &entries) {
    while (!block.empty()) {
        const std::size_t end = std::min(block.find('\n'), block.size());
        if (!takeLine(block.substr(0, end), entries))
            return false;
        block.remove_prefix(std::min(end + 1, block.size()));
    }
    return true;
}

bool LogFileReader::takeLine(std::string_view line, std::vector<JSONLEntry> &entries) {
    if (isBlank(line))
        return true;
    const bool none = m_selection == LineSelection::usageOnly && !mayBeUsageLine(line);
    if (none || line.size() > m_longestLine)
        return simdjson::validate_utf8(line);
    auto entry = m_decoder.decodePadded(line);
    // What decodes is UTF-8; anything else has yet to be looked at.
    if (!entry)
        return simdjson::validate_utf8(line);
    if (m_selection == LineSelection::all || entry->isUsageLine())
        entries.push_back(*entry);
    return true;
}

} // namespace burnwick
