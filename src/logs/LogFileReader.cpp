// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/LogFileReader.h"

#include "logs/LineFilter.h"

#include <simdjson.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <new>
#include <optional>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace burnwick {

namespace {

/// Closes the descriptor when destroyed.
class OpenFile {
public:
    // Not blocking: a FIFO may have taken the file's place since it was listed.
    explicit OpenFile(const std::filesystem::path &path)
        : m_descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {}
    ~OpenFile() {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;

    /// Null if it is not open, or no regular file.
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

} // namespace

LogFileReader::LogFileReader(LineSelection selection, std::size_t blockSize, std::size_t longestLine)
    : m_selection(selection)
    , m_longestLine(longestLine)
    , m_blocks(blockSize, longestLine) {}

LogEntries LogFileReader::readFile(const std::filesystem::path &file, const StopRequest &stop) {
    const OpenFile open(file);
    const auto size = open.size();
    if (!size)
        return nullptr;
    // Not beyond its size when it was opened: a file that grows as fast as it is read has no end, nor have
    // some of the kernel's.
    std::size_t left = *size;
    const auto source = [&open, &left](char *data, std::size_t room) {
        const ssize_t count = open.read(data, std::min(room, left));
        left -= static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        return count;
    };
    try {
        auto entries = read(source, stop);
        if (!entries)
            return nullptr;
        if (!entries->empty()) {
            const InternedString session(file.stem().native());
            for (JSONLEntry &entry : *entries)
                entry.setSessionId(session);
        }
        entries->shrink_to_fit();
        return std::make_shared<const std::vector<JSONLEntry>>(*std::move(entries));
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

std::optional<std::vector<JSONLEntry>> LogFileReader::read(const BlockReader::Read &source,
                                                           const StopRequest &stop) {
    std::vector<JSONLEntry> entries;
    bool isUtf8 = true;
    const bool complete = m_blocks.readAll(
        [&](char *data, std::size_t size) { return stop.isMade() ? -1 : source(data, size); },
        [&](std::string_view bytes, BlockReader::Content content) {
            isUtf8 = simdjson::validate_utf8(bytes);
            if (isUtf8 && content == BlockReader::Content::lines)
                readLines(bytes, entries);
            return isUtf8;
        });
    if (!isUtf8)
        entries.clear();
    else if (!complete)
        return std::nullopt;
    return entries;
}

void LogFileReader::readLines(std::string_view lines, std::vector<JSONLEntry> &entries) {
    while (!lines.empty()) {
        const std::size_t end = std::min(lines.find('\n'), lines.size());
        const std::string_view line = lines.substr(0, end);
        lines.remove_prefix(std::min(end + 1, lines.size()));
        const bool all = m_selection == LineSelection::all;
        if (line.size() > m_longestLine || !(all || mayBeUsageLine(line)))
            continue;
        const auto entry = m_decoder.decode(line);
        if (entry && (all || entry->isUsageLine()))
            entries.push_back(*entry);
    }
}

void readMissingEntries(LogHistory &history, unsigned threads, const StopRequest &stop) {
    std::vector<std::size_t> missing;
    std::uint64_t bytes = 0;
    for (std::size_t i = 0; i < history.files.size(); ++i) {
        if (history.entries[i] == nullptr && history.files[i].regular) {
            missing.push_back(i);
            bytes += history.files[i].size;
        }
    }
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        try {
            LogFileReader reader(LineSelection::usageOnly);
            for (std::size_t i = next++; i < missing.size() && !stop.isMade(); i = next++)
                history.entries[missing[i]] = reader.readFile(history.files[missing[i]].path, stop);
        } catch (const std::bad_alloc &) {
            // Not enough memory for the reader itself. The other threads go on.
        }
    };
    // Starting a thread costs about as much as reading this much.
    constexpr std::uint64_t bytesWorthAThread = 1U << 20U;
    const std::uint64_t workers =
        std::min({std::uint64_t{threads}, std::uint64_t{missing.size()}, 1 + bytes / bytesWorthAThread});
    std::vector<StoppableThread> helpers;
    try {
        for (std::uint64_t i = 1; i < workers; ++i)
            helpers.emplace_back(work);
    } catch (const std::system_error &) {
        // No more threads can be started. Those that run read all the files.
    }
    work();
}

} // namespace burnwick
