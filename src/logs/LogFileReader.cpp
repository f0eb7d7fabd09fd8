// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/LogFileReader.h"

#include "async/RunOnThreads.h"
#include "logs/LineFilter.h"

#include <simdjson.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <new>
#include <optional>

#include <fcntl.h>
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

    /// -1 if it could not be opened.
    [[nodiscard]] int descriptor() const { return m_descriptor; }
    ssize_t read(char *data, std::size_t size) const {
        ssize_t count = 0;
        do {
            count = ::read(m_descriptor, data, size);
        } while (count < 0 && errno == EINTR);
        return count;
    }

    [[nodiscard]] bool seek(std::uint64_t offset) const {
        return ::lseek(m_descriptor, static_cast<off_t>(offset), SEEK_SET) >= 0;
    }

private:
    int m_descriptor;
};

} // namespace

LogFileReader::LogFileReader(LineSelection selection, std::size_t blockSize, std::size_t longestLine)
    : m_selection(selection)
    , m_longestLine(longestLine)
    , m_blocks(blockSize, longestLine) {}

std::optional<FileReading> LogFileReader::readFile(const std::filesystem::path &file,
                                                   const FileReading *former, Watch watch,
                                                   const StopRequest &stop) {
    const OpenFile open(file);
    const Instant now = std::chrono::time_point_cast<Instant::duration>(std::chrono::system_clock::now());
    const FileStatus status = statusOf(open.descriptor());
    if (!status.regular)
        return std::nullopt;
    // The messages of an unfinished line cannot be taken back.
    if (former != nullptr && (former->entries->size() != former->position.entries ||
                              !hasGrown(former->position, status, open.descriptor(), watch)))
        former = nullptr;
    std::uint64_t begin = former != nullptr ? former->position.offset : 0;
    if (!open.seek(begin))
        return std::nullopt;
    // Not beyond its size when it was opened: a file that grows as fast as it is read has no end, nor have
    // some of the kernel's.
    std::uint64_t left = status.size - begin;
    const auto source = [&open, &left](char *data, std::size_t room) {
        const ssize_t count = open.read(data, static_cast<std::size_t>(std::min<std::uint64_t>(room, left)));
        left -= static_cast<std::uint64_t>(std::max<ssize_t>(count, 0));
        return count;
    };
    try {
        auto lines = read(source, stop);
        if (!lines)
            return std::nullopt;
        if (!lines->isUtf8) { // the file has no entries then
            former = nullptr;
            begin = 0;
        }
        const std::size_t known = former != nullptr ? former->position.entries : 0;
        auto entries = std::make_shared<EntryList>();
        entries->reserve(known + lines->entries.size());
        if (known > 0) {
            entries->assign(former->entries->begin(), former->entries->end());
            entries->messages = former->entries->messages;
        }
        if (!lines->entries.empty()) {
            const InternedString session(file.stem().native());
            for (JSONLEntry &entry : lines->entries) {
                entry.setSessionId(session);
                entries->push_back(entry);
            }
            entries->messages.add(lines->entries, lines->details);
        }
        FileReading reading{std::move(entries), {status}, former != nullptr, std::move(lines->details)};
        ReadingPosition &position = reading.position;
        position.offset = begin + lines->wholeBytes;
        position.entries = known + lines->wholeEntries;
        position.settled = isSettled(status, now);
        const auto fingerprint = fingerprintOf(open.descriptor(), position.offset);
        if (!fingerprint)
            return std::nullopt; // truncated meanwhile
        position.fingerprint = *fingerprint;
        return reading;
    } catch (const std::bad_alloc &) {
        return std::nullopt;
    }
}

std::optional<LogFileReader::Lines> LogFileReader::read(const BlockReader::Read &source,
                                                        const StopRequest &stop) {
    Lines lines;
    std::uint64_t taken = 0;
    const bool complete = m_blocks.readAll(
        [&](char *data, std::size_t size) { return stop.isMade() ? -1 : source(data, size); },
        [&](std::string_view bytes, BlockReader::Content content) {
            lines.isUtf8 = simdjson::validate_utf8(bytes);
            if (!lines.isUtf8)
                return false;
            if (content == BlockReader::Content::lines)
                readLines(bytes, lines);
            taken += bytes.size();
            if (bytes.ends_with('\n')) {
                lines.wholeBytes = taken;
                lines.wholeEntries = lines.entries.size();
            }
            return true;
        });
    if (!lines.isUtf8) {
        lines = {};
        lines.isUtf8 = false;
        return lines;
    }
    if (!complete)
        return std::nullopt;
    return lines;
}

void LogFileReader::readLines(std::string_view bytes, Lines &lines) {
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        const std::string_view line = bytes.substr(0, end);
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
        const bool all = m_selection == LineSelection::all;
        if (line.size() > m_longestLine || !(all || mayBeUsageLine(line)))
            continue;
        const auto entry = m_decoder.decode(line);
        if (entry && (all || entry->isUsageLine())) {
            lines.entries.push_back(*entry);
            lines.details.push_back(m_decoder.details());
        }
    }
}

namespace {

/// Reads the file's entries, or what was added to them.
void readEntries(LogHistory &history, std::size_t index, LogFileReader &reader, Watch watch,
                 ReadingStore *store, const StopRequest &stop) {
    const std::filesystem::path &path = history.files[index].path;
    LogEntries &entries = history.entries[index];
    ReadingPosition &position = history.positions[index];
    const FileReading former{std::move(entries), position, false, {}};
    auto reading = reader.readFile(path, former.entries != nullptr ? &former : nullptr, watch, stop);
    if (!reading)
        return;
    if (store != nullptr && !store->keep(path, reading->isContinued ? &former.position : nullptr, *reading)) {
        reading = reader.readFile(path, nullptr, watch, stop);
        if (!reading)
            return;
        static_cast<void>(store->keep(path, nullptr, *reading));
    }
    const bool isEqual = former.entries != nullptr && *former.entries == *reading->entries;
    entries = isEqual ? former.entries : std::move(reading->entries);
    position = reading->position;
}

} // namespace

void readMissingEntries(LogHistory &history, unsigned threads, Watch watch, ReadingStore *store,
                        const StopRequest &stop) {
    std::vector<std::size_t> missing;
    std::uint64_t bytes = 0;
    for (std::size_t i = 0; i < history.files.size(); ++i) {
        const FileStatus &status = history.files[i].status;
        if (!status.regular) {
            history.entries[i] = nullptr;
        } else if (history.entries[i] == nullptr || !isUnchanged(history.positions[i], status)) {
            missing.push_back(i);
            bytes += status.size;
        }
    }
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        try {
            LogFileReader reader(LineSelection::usageOnly);
            for (std::size_t i = next++; i < missing.size() && !stop.isMade(); i = next++)
                readEntries(history, missing[i], reader, watch, store, stop);
        } catch (const std::bad_alloc &) {
            // Not enough memory for the reader itself. The other threads go on.
        }
    };
    // Starting a thread costs about as much as reading this much.
    constexpr std::uint64_t bytesWorthAThread = 1U << 20U;
    const std::uint64_t workers =
        std::min({std::uint64_t{threads}, std::uint64_t{missing.size()}, 1 + bytes / bytesWorthAThread});
    runOnThreads(workers, work);
}

} // namespace burnwick
