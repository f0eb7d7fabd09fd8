// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <filesystem>

namespace burnwick {

/// Returns the bytes of a regular file of at most 1 MiB, links followed; empty for any other file, and when
/// it cannot be read. Does not wait for the writer of a pipe. Safe from any thread.
[[nodiscard]] QByteArray jsonFileBytes(const std::filesystem::path &file);

/// Replaces the file as a whole. The file and a missing folder are made for the user alone. Returns false if
/// it cannot be written. Safe from any thread.
bool replaceJsonFile(const std::filesystem::path &file, const QJsonObject &object);

} // namespace burnwick
