// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/SignalHold.h"

#include <csignal>

namespace burnwick {

namespace {

constexpr int heldSignals[] = {SIGINT, SIGTERM, SIGHUP};

volatile std::sig_atomic_t firstSignal = 0;

extern "C" void remember(int number) {
    if (firstSignal == 0)
        firstSignal = number;
}

/// Does nothing unless the handler is `from`: signals ignored at start stay ignored.
void exchangeHandler(int number, void (*from)(int), void (*to)(int)) {
    struct sigaction action {};
    if (::sigaction(number, nullptr, &action) != 0 || action.sa_handler != from)
        return;
    action = {};
    action.sa_handler = to;
    action.sa_flags = SA_RESTART;
    ::sigaction(number, &action, nullptr);
}

} // namespace

// A signal mask would not do: other threads would receive the signals.
SignalHold::SignalHold() {
    firstSignal = 0;
    for (const int number : heldSignals)
        exchangeHandler(number, SIG_DFL, remember);
}

SignalHold::~SignalHold() {
    for (const int number : heldSignals)
        exchangeHandler(number, remember, SIG_DFL);
    if (firstSignal != 0)
        std::raise(firstSignal);
}

} // namespace burnwick
