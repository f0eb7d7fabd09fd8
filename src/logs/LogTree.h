// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/JSONLParser.h"

#include <filesystem>
#include <vector>

namespace burnwick {

/// Every file named *.jsonl below the directory, hidden or not, at any depth, by time of modification and
/// then by path, bytewise. Links to directories are not followed; what cannot be listed is passed over.
[[nodiscard]] std::vector<LogFile> walkLogTree(const std::filesystem::path &root);

} // namespace burnwick
