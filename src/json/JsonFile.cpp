// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "json/JsonFile.h"

#include <fstream>
#include <system_error>

namespace burnwick {

QByteArray jsonFileBytes(const std::filesystem::path &file) {
    constexpr qsizetype largestFile = qsizetype{1} << 20U;
    std::error_code error;
    // Opening a pipe would block until it has a writer.
    if (!std::filesystem::is_regular_file(file, error))
        return {};
    std::ifstream input(file, std::ios::binary);
    // One byte more shows that the limit is exceeded. Not the size: the file may be growing.
    QByteArray bytes(largestFile + 1, Qt::Uninitialized);
    input.read(bytes.data(), bytes.size());
    bytes.truncate(input.gcount());
    return bytes.size() <= largestFile ? bytes : QByteArray();
}

} // namespace burnwick
