// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

namespace burnwick {

/// While it lives, SIGINT, SIGTERM and SIGHUP do not end the program. With its end the first that came does,
/// unless it was handled or ignored before. One at a time.
class SignalHold final {
public:
    SignalHold();
    ~SignalHold();
    SignalHold(const SignalHold &) = delete;
    SignalHold &operator=(const SignalHold &) = delete;
};

} // namespace burnwick
