// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/LogTree.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <tuple>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace burnwick {

namespace {

struct CloseDirectory {
    void operator()(DIR *directory) const noexcept { ::closedir(directory); }
};
using Directory = std::unique_ptr<DIR, CloseDirectory>;

bool isLogName(std::string_view name) {
    constexpr std::string_view extension = ".jsonl";
    return name.size() > extension.size() && name.ends_with(extension);
}

/// Whether it is a directory itself and no link to one.
bool isDirectory(int parent, const dirent &entry) {
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    // Some file systems do not tell.
    struct stat status {};
    return ::fstatat(parent, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

LogFile describe(int parent, const char *name) {
    LogFile file;
    struct stat status {};
    if (::fstatat(parent, name, &status, 0) != 0)
        return file;
    file.modified = nearestInstant(status.st_mtim.tv_sec, status.st_mtim.tv_nsec);
    file.size = static_cast<std::uint64_t>(std::max<off_t>(status.st_size, 0));
    file.regular = S_ISREG(status.st_mode);
    return file;
}

} // namespace

Instant nearestInstant(std::int64_t seconds, std::int64_t nanoseconds) {
    using std::chrono::duration_cast;
    constexpr auto latest = duration_cast<std::chrono::seconds>(Instant::max().time_since_epoch()).count();
    constexpr auto earliest = duration_cast<std::chrono::seconds>(Instant::min().time_since_epoch()).count();
    if (seconds >= latest)
        return Instant::max();
    if (seconds < earliest)
        return Instant::min();
    return Instant(std::chrono::seconds(seconds) + std::chrono::nanoseconds(nanoseconds));
}

std::vector<LogFile> walkLogTree(const std::string &root, std::optional<Instant> since,
                                 const std::stop_token &stop) {
    std::vector<LogFile> files;
    std::vector<std::string> pending{root};
    while (!pending.empty()) {
        const std::string path = std::move(pending.back()) + '/';
        pending.pop_back();
        // One directory after the other, so that one that vanishes does not end the walk.
        const Directory directory(::opendir(path.c_str()));
        while (directory && !stop.stop_requested()) {
            const dirent *entry = ::readdir(directory.get()); // NOLINT: no other thread has this directory
            if (entry == nullptr)
                break;
            const std::string_view name = entry->d_name;
            const int parent = ::dirfd(directory.get());
            if (isLogName(name)) {
                LogFile file = describe(parent, entry->d_name);
                if (!since || (file.modified && *file.modified >= *since)) {
                    file.path.reserve(path.size() + name.size());
                    file.path.append(path).append(name);
                    files.push_back(std::move(file));
                }
            }
            if (name != "." && name != ".." && isDirectory(parent, *entry))
                pending.push_back(path + entry->d_name);
        }
    }
    std::sort(files.begin(), files.end(), [](const LogFile &a, const LogFile &b) {
        return std::tie(a.modified, a.path) < std::tie(b.modified, b.path);
    });
    return files;
}

} // namespace burnwick
