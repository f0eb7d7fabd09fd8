// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "BenchDesktop.h"
#include "ResultTable.h"

namespace burnwick::bench {

/// Measures what lines cost that are appended to one of 1 GB of logs, which are made below the folder unless
/// they are there already.
void measureLiveLines(Desktop &desktop, const QString &program, const std::filesystem::path &logs,
                      ResultTable &table);

} // namespace burnwick::bench
