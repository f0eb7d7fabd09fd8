// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/LogTree.h"

#include <algorithm>
#include <system_error>
#include <tuple>

namespace burnwick {

namespace fs = std::filesystem;

namespace {

/// When the file was modified, or the nearest instant that can be represented: file systems have times beyond
/// the year 2261. Null if unknown.
std::optional<Instant> modificationOf(const fs::directory_entry &entry) {
    std::error_code error;
    const fs::file_time_type time = entry.last_write_time(error);
    using FileClock = fs::file_time_type::clock;
    const bool tooLate =
        error ? error == std::errc::value_too_large : time >= FileClock::from_sys(Instant::max());
    if (tooLate)
        return Instant::max();
    if (error)
        return std::nullopt;
    return std::chrono::time_point_cast<Instant::duration>(FileClock::to_sys(time));
}

LogFile describe(const fs::directory_entry &entry) {
    LogFile file{entry.path(), modificationOf(entry), 0, false};
    std::error_code error;
    file.regular = entry.is_regular_file(error);
    if (const auto size = entry.file_size(error); !error)
        file.size = size;
    return file;
}

} // namespace

bool isBefore(const LogFile &file, const LogFile &other) {
    return std::tie(file.modified, file.path.native()) < std::tie(other.modified, other.path.native());
}

bool isModifiedSince(const LogFile &file, Instant instant) {
    return file.modified && *file.modified >= instant;
}

std::vector<LogFile> allLogFiles(const fs::path &root, const StopRequest &stop) {
    std::vector<LogFile> files;
    std::vector<fs::path> pending{root};
    while (!pending.empty()) {
        // Not recursive_directory_iterator: one directory that vanishes would end its walk.
        std::error_code error;
        fs::directory_iterator entry(pending.back(), error);
        pending.pop_back();
        for (; !error && entry != fs::directory_iterator() && !stop.isMade(); entry.increment(error)) {
            std::error_code unknownType;
            if (entry->path().extension() == ".jsonl")
                files.push_back(describe(*entry));
            if (!entry->is_symlink(unknownType) && entry->is_directory(unknownType))
                pending.push_back(entry->path());
        }
    }
    std::ranges::sort(files, isBefore);
    return files;
}

std::vector<LogFile> recentLogFiles(const fs::path &root, Instant since) {
    auto files = allLogFiles(root);
    std::erase_if(files, [since](const LogFile &file) { return !isModifiedSince(file, since); });
    return files;
}

} // namespace burnwick
