// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/ThreadName.h"

#include <pthread.h>

namespace burnwick {

void platform::nameThisThread(const char *name) noexcept {
    pthread_setname_np(pthread_self(), name);
}

} // namespace burnwick
