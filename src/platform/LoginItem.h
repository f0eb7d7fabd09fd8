// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace burnwick {

/// Why the login item could not be changed: text for a log, without a line feed at its end.
struct LoginItemFailure {
    std::string reason;
};

/// Whether the desktop starts this program when the user logs in. The system's own record is the truth: the
/// user may change it elsewhere. Main thread only.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    [[nodiscard]] virtual bool isRegistered() const = 0;
    /// Makes the desktop start the program that runs now; changes nothing when it does so already. After a
    /// failure all is as it was before.
    [[nodiscard]] virtual std::optional<LoginItemFailure> registerItem() = 0;
    /// The desktop starts it no more; succeeds when it did not. After a failure all is as it was before.
    [[nodiscard]] virtual std::optional<LoginItemFailure> unregisterItem() = 0;
};

} // namespace burnwick
