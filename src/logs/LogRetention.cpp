// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/LogRetention.h"

#include "logs/FileStatus.h"
#include "json/JsonReading.h"

#include <algorithm>
#include <fstream>
#include <limits>

namespace burnwick {

namespace {

constexpr int usualDays = 30;

/// Bytes. The settings need much less.
constexpr std::size_t largestFile = std::size_t{1} << 20U;

/// Returns the bytes; empty for a file that is too large or cannot be read.
QByteArray bytesOf(const std::filesystem::path &file) {
    // Opening a pipe would block until it has a writer.
    if (const FileStatus status = statusOf(file); !status.regular || status.size > largestFile)
        return {};
    std::ifstream input(file, std::ios::binary);
    QByteArray bytes(static_cast<qsizetype>(largestFile), Qt::Uninitialized);
    input.read(bytes.data(), bytes.size());
    bytes.truncate(input.gcount());
    return bytes;
}

} // namespace

int daysUntilCleanup(const std::filesystem::path &home) {
    try {
        const QJsonObject settings = parseJsonObject(bytesOf(home / ".claude" / "settings.json"));
        const qint64 days = settings.value(QLatin1String("cleanupPeriodDays")).toInteger();
        constexpr qint64 most = std::numeric_limits<int>::max();
        return days > 0 ? static_cast<int>(std::min(days, most)) : usualDays;
    } catch (const DecodeError &) {
        return usualDays;
    }
}

} // namespace burnwick
