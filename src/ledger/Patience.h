// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

namespace burnwick {

/// How much time a series of operations may take.
enum class Patience {
    usual, ///< waits at most a fifth of a second altogether for other processes
    brief, ///< waits at most 20 ms, and leaves repairs and the emptying of the file "-wal" to other processes
};

} // namespace burnwick
