// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

namespace burnwick {

/// Delays SIGINT, SIGTERM and SIGHUP: the destructor raises the first one received. Signals that the process
/// handled or ignored before are unaffected. One object at a time.
class SignalHold final {
public:
    SignalHold();
    ~SignalHold();
    SignalHold(const SignalHold &) = delete;
    SignalHold &operator=(const SignalHold &) = delete;
};

} // namespace burnwick
