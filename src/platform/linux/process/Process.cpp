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

std::atomic<int> worksUnderWay = 0;

void endAtOnceIfWorkRuns(int status, void *) {
    if (worksUnderWay == 0)
        return;
    std::fflush(nullptr);
    ::_exit(status);
}

} // namespace

void runUnawaited(std::function<void()> work) {
    const auto counted = [work = std::move(work)] {
        work();
        --worksUnderWay;
    };
    ++worksUnderWay;
    try {
        std::thread(counted).detach();
    } catch (const std::system_error &) {
        counted(); // No more threads are to be had: rather a pause than no answer.
    }
}

ProcessScope::ProcessScope() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_CORE, &limit) != 0)
        return;
    // The hard limit stays: programs started from here may raise their own again.
    limit.rlim_cur = 0;
    static_cast<void>(::setrlimit(RLIMIT_CORE, &limit));
}

int ProcessScope::end(int status) const {
    endAtOnceIfWorkRuns(status, nullptr);
    return status;
}

ProcessScope::~ProcessScope() {
    // Handlers run in reverse order: registered now, it precedes the destruction of every static object.
    static_cast<void>(::on_exit(endAtOnceIfWorkRuns, nullptr));
}

} // namespace burnwick::platform
