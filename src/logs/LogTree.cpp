// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/LogTree.h"

#include <algorithm>
#include <system_error>
#include <tuple>

#include <sys/stat.h>

namespace burnwick {

namespace {

LogFile describe(const std::filesystem::path &path) {
    LogFile file{path, std::nullopt, 0, false};
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return file;
#ifdef __APPLE__
    const timespec modified = status.st_mtimespec;
#else
    const timespec modified = status.st_mtim;
#endif
    file.modified =
        Instant(std::chrono::seconds(modified.tv_sec) + std::chrono::nanoseconds(modified.tv_nsec));
    file.size = static_cast<std::uint64_t>(std::max<off_t>(status.st_size, 0));
    file.regular = S_ISREG(status.st_mode);
    return file;
}

} // namespace

std::vector<LogFile> walkLogTree(const std::filesystem::path &root) {
    namespace fs = std::filesystem;
    std::vector<LogFile> files;
    std::vector<fs::path> pending{root};
    while (!pending.empty()) {
        const fs::path directory = std::move(pending.back());
        pending.pop_back();
        // One iterator a directory: a recursive one ends for good at the first directory that vanishes.
        std::error_code error;
        fs::directory_iterator entry(directory, error);
        while (!error && entry != fs::directory_iterator()) {
            if (entry->path().extension() == ".jsonl")
                files.push_back(describe(entry->path()));
            std::error_code typeUnknown;
            if (entry->symlink_status(typeUnknown).type() == fs::file_type::directory)
                pending.push_back(entry->path());
            entry.increment(error);
        }
    }
    std::sort(files.begin(), files.end(), [](const LogFile &a, const LogFile &b) {
        return std::tie(a.modified, a.path.native()) < std::tie(b.modified, b.path.native());
    });
    return files;
}

} // namespace burnwick
