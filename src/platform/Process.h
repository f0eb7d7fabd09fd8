// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace burnwick::platform {

/// Runs work that may never end on a thread of its own. It must throw nothing and use nothing that others may
/// destroy. A program with a ProcessScope ends without waiting for it. When the system has no thread left,
/// the caller does the work.
void runUnawaited(std::function<void()> work);

/// What holds from a program's first step to its last. The first object in main().
///
/// A crash leaves no core dump behind, which would hold the user's tokens. And once main() has returned, no
/// static object is destroyed while such work runs: libraries would wait there for that work's end.
class ProcessScope final {
public:
    ProcessScope();
    ~ProcessScope();
    /// Gives the status back, for main() to return it; while such work runs, ends the process with it
    /// instead. To be called before the application object is destroyed, which takes what libraries use with
    /// it.
    [[nodiscard]] int end(int status) const;
    ProcessScope(const ProcessScope &) = delete;
    ProcessScope &operator=(const ProcessScope &) = delete;
};

} // namespace burnwick::platform
