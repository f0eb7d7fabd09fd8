// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <filesystem>

namespace burnwick {

/// Returns the bytes of a regular file of at most 1 MiB, links followed; empty for any other file, and when
/// it cannot be read. Does not wait for the writer of a pipe. Safe from any thread.
[[nodiscard]] QByteArray jsonFileBytes(const std::filesystem::path &file);

} // namespace burnwick
