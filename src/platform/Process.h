// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace burnwick::platform {

/// Runs work that may never end on a new thread, or on the caller's when the system cannot create one. The
/// work must not throw, and must own all that it uses. A program with a ProcessScope ends without waiting for
/// it.
void runDetachedThread(std::function<void()> work);

/// The first object in main(), for the process's whole life.
///
/// A crash leaves no core dump behind, which would contain the user's tokens. After end(), no static object
/// is destroyed while a detached thread works: libraries would block there until its end.
class ProcessScope final {
public:
    ProcessScope();
    /// Returns the status, for main() to return it; while a detached thread works, ends the process with it
    /// instead. main() returns each status by this function, before it destroys the application object, on
    /// whose resources libraries depend.
    [[nodiscard]] int end(int status) const;
    ProcessScope(const ProcessScope &) = delete;
    ProcessScope &operator=(const ProcessScope &) = delete;
};

} // namespace burnwick::platform
