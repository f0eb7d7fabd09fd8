// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "async/StoppableThread.h"

#include <cstddef>
#include <exception>
#include <mutex>
#include <system_error>
#include <vector>

namespace burnwick {

/// Calls the function on up to that many threads at once, the calling one among them, and returns after all
/// calls. There are fewer calls, but at least one, if the system cannot create threads. Throws what one of
/// the calls has thrown.
template <typename Work>
void runOnThreads(std::size_t threads, const Work &work) {
    std::mutex mutex;
    std::exception_ptr failure;
    const auto call = [&] {
        try {
            work();
        } catch (...) {
            const std::lock_guard lock(mutex);
            failure = std::current_exception();
        }
    };
    {
        std::vector<StoppableThread> others;
        try {
            for (std::size_t i = 1; i < threads; ++i)
                others.emplace_back(call);
        } catch (const std::system_error &) {
            // The calls that run do all of the work.
        }
        call();
    }
    if (failure)
        std::rethrow_exception(failure);
}

} // namespace burnwick
