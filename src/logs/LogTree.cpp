// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/LogTree.h"

#include "logs/LogFolders.h"
#include "platform/FileIdentity.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <system_error>
#include <tuple>

namespace burnwick {

namespace fs = std::filesystem;

namespace {

bool isLogName(const fs::path &path) {
    return path.extension() == ".jsonl";
}

} // namespace

bool isBefore(const LogFile &file, const LogFile &other) {
    return std::tie(file.status.modified, file.path.native()) <
           std::tie(other.status.modified, other.path.native());
}

bool isModifiedSince(const LogFile &file, Instant instant) {
    return file.status.modified && *file.status.modified >= instant;
}

std::vector<LogFile> allLogFiles(const std::vector<fs::path> &roots, const StopRequest &stop) {
    std::vector<LogFile> files;
    std::vector<fs::path> pending;
    std::ranges::copy_if(distinctFolders(roots), std::back_inserter(pending),
                         [](const fs::path &root) { return identityOf(root).has_value(); });
    // A directory of one root may be mounted in another one. A single root has no second name.
    const bool haveSeveralRoots = pending.size() > 1;
    std::set<FileIdentity> listed;
    while (!pending.empty()) {
        const fs::path folder = std::move(pending.back());
        pending.pop_back();
        if (haveSeveralRoots) {
            const auto identity = identityOf(folder);
            if (!identity || !listed.insert(*identity).second)
                continue;
        }
        // Not recursive_directory_iterator: one directory that vanishes would end its walk.
        std::error_code error;
        fs::directory_iterator entry(folder, error);
        for (; !error && entry != fs::directory_iterator() && !stop.isMade(); entry.increment(error)) {
            std::error_code unknownType;
            if (isLogName(entry->path()))
                files.push_back({entry->path(), statusOf(entry->path())});
            if (!entry->is_symlink(unknownType) && entry->is_directory(unknownType))
                pending.push_back(entry->path());
        }
    }
    std::ranges::sort(files, isBefore);
    return files;
}

std::optional<LogFile> logFileAt(const fs::path &path) {
    std::error_code error;
    if (!isLogName(path) || !fs::exists(fs::symlink_status(path, error)))
        return std::nullopt;
    return LogFile{path, statusOf(path)};
}

std::vector<LogFile> recentLogFiles(const std::vector<fs::path> &roots, Instant since) {
    auto files = allLogFiles(roots);
    std::erase_if(files, [since](const LogFile &file) { return !isModifiedSince(file, since); });
    return files;
}

} // namespace burnwick
