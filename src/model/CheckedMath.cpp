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
    // Calls no destructors and no atexit handlers, because other threads may use those objects.
    constexpr int internalSoftwareError = 70; // EX_SOFTWARE of sysexits.h
    std::_Exit(internalSoftwareError);
}

} // namespace burnwick
