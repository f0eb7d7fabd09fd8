// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/FileStatus.h"

#include <sys/stat.h>

namespace burnwick {

namespace {

Instant instantOf(const timespec &time) {
    using std::chrono::sys_seconds;
    const sys_seconds seconds{std::chrono::seconds(time.tv_sec)};
    if (seconds >= std::chrono::floor<std::chrono::seconds>(Instant::max()))
        return Instant::max();
    if (seconds <= std::chrono::ceil<std::chrono::seconds>(Instant::min()))
        return Instant::min();
    return Instant(seconds) + std::chrono::nanoseconds(time.tv_nsec);
}

struct Times {
    Instant modified;
    Instant changed;
};

// The systems name the members differently.
template <typename Status>
Times timesOf(const Status &status) {
    if constexpr (requires { status.st_mtim; })
        return {instantOf(status.st_mtim), instantOf(status.st_ctim)};
    else
        return {instantOf(status.st_mtimespec), instantOf(status.st_ctimespec)};
}

FileStatus statusFrom(int result, const struct stat &status) {
    if (result != 0)
        return {};
    const auto [modified, changed] = timesOf(status);
    return {static_cast<std::uint64_t>(status.st_dev),
            static_cast<std::uint64_t>(status.st_ino),
            status.st_size > 0 ? static_cast<std::uint64_t>(status.st_size) : 0,
            modified,
            changed,
            S_ISREG(status.st_mode)};
}

} // namespace

FileStatus statusOf(const std::filesystem::path &path) {
    struct stat status {};
    return statusFrom(::stat(path.c_str(), &status), status);
}

FileStatus statusOf(int descriptor) {
    struct stat status {};
    return statusFrom(::fstat(descriptor, &status), status);
}

} // namespace burnwick
