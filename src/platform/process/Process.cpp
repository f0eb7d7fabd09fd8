// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Process.h"

#include <atomic>
#include <cstdio>
#include <system_error>
#include <thread>
#include <utility>

#include <sys/resource.h>
#include <unistd.h>

namespace burnwick::platform {

namespace {

std::atomic<int> workingThreads = 0;

} // namespace

void runDetachedThread(std::function<void()> work) {
    const auto counted = [work = std::move(work)] {
        work();
        --workingThreads;
    };
    ++workingThreads;
    try {
        std::thread(counted).detach();
    } catch (const std::system_error &) {
        counted(); // a blocked caller is better than a lost result
    }
}

ProcessScope::ProcessScope() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_CORE, &limit) != 0)
        return;
    // The hard limit is kept: child processes may raise their own limit again.
    limit.rlim_cur = 0;
    static_cast<void>(::setrlimit(RLIMIT_CORE, &limit));
}

int ProcessScope::end(int status) const {
    if (workingThreads != 0) {
        std::fflush(nullptr);
        ::_exit(status);
    }
    return status;
}

} // namespace burnwick::platform
