// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>

namespace burnwick {

/// Runs the work in a new process in a session without terminal: a program that waits for this process or
/// reads its output does not wait for the work. Standard input, output and error are empty there; the process
/// ends when the work returns or throws, at the latest after that time. Returns false if the system cannot
/// create a process. Only for a process with one thread.
bool runInBackground(std::chrono::seconds atMost, const std::function<void()> &work);

} // namespace burnwick
