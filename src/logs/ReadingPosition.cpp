// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/ReadingPosition.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include <unistd.h>

namespace burnwick {

namespace {

// A comparison of a file that grew by a line reads this twice: before and after the line.
constexpr std::size_t sampleSize = 4096;
constexpr std::uint64_t samples = 5;

bool readFully(int descriptor, char *data, std::size_t size, std::uint64_t offset) {
    while (size > 0) {
        const ssize_t count = ::pread(descriptor, data, size, static_cast<off_t>(offset));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        data += count;
        size -= static_cast<std::size_t>(count);
        offset += static_cast<std::uint64_t>(count);
    }
    return true;
}

} // namespace

bool isUnchanged(const ReadingPosition &position, const FileStatus &status) {
    return position.settled && position.includesRest && position.status == status;
}

bool hasGrown(const ReadingPosition &position, const FileStatus &status, int descriptor, Watch watch) {
    const FileStatus &former = position.status;
    if (position.offset == 0 || status.device != former.device || status.inode != former.inode)
        return false;
    const bool isSame = status == former && position.settled;
    if (status.size <= former.size && !isSame)
        return false;
    const bool isSampled = position.offset > sampleSize * samples;
    if (isSampled && !isSame && watch == Watch::none)
        return false;
    return fingerprintOf(descriptor, position.offset) == position.fingerprint;
}

std::optional<std::uint64_t> fingerprintOf(int descriptor, std::uint64_t offset) {
    std::array<char, sampleSize * samples> bytes;
    std::size_t size = bytes.size();
    if (offset <= bytes.size()) {
        size = static_cast<std::size_t>(offset);
        if (!readFully(descriptor, bytes.data(), size, 0))
            return std::nullopt;
    } else {
        // Spread evenly from the begin to the offset.
        const std::uint64_t last = offset - sampleSize;
        for (std::uint64_t i = 0; i < samples; ++i) {
            const std::uint64_t at = last / (samples - 1) * i + last % (samples - 1) * i / (samples - 1);
            if (!readFully(descriptor, bytes.data() + i * sampleSize, sampleSize, at))
                return std::nullopt;
        }
    }
    return XXH3_64bits_withSeed(bytes.data(), size, offset);
}

bool isSettled(const FileStatus &status, Instant now) {
    using namespace std::chrono_literals;
    // The kernel stamps files with the time of its last clock tick, 10 ms ago at most. Some file systems
    // store whole seconds, or every other one.
    const bool inWholeSeconds = status.changed.time_since_epoch() % 1s == 0s;
    return status.changed <= now - (inWholeSeconds ? 2s : 20ms);
}

} // namespace burnwick
