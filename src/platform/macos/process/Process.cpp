// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Process.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <thread>
#include <utility>

#include <sys/resource.h>
#include <unistd.h>

namespace burnwick::platform {

namespace {

std::atomic<int> workingThreads = 0;
/// For the exit handler, which is not called with the status.
std::atomic<int> exitStatus = EXIT_SUCCESS;

void endAtOnceIfThreadsWork() {
    if (workingThreads == 0)
        return;
    std::fflush(nullptr);
    ::_exit(exitStatus);
}

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
    exitStatus = status;
    endAtOnceIfThreadsWork();
    return status;
}

ProcessScope::~ProcessScope() {
    // Exit handlers run in reverse order: this one runs before the destructors of static objects.
    static_cast<void>(std::atexit(endAtOnceIfThreadsWork));
}

} // namespace burnwick::platform
