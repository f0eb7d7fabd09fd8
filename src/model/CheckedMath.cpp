// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/CheckedMath.h"

#include <cstdio>
#include <cstdlib>

namespace burnwick {

void stopOnTokenOverflow() noexcept {
    std::fputs("burnwick: the token counts in the session logs add up to more than 64 bits can hold\n",
               stderr);
    std::fflush(stderr);
    // No unwinding and no atexit handlers: this may run on any thread while others are at work.
    constexpr int internalSoftwareError = 70; // EX_SOFTWARE of sysexits.h
    std::_Exit(internalSoftwareError);
}

} // namespace burnwick
