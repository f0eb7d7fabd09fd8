// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace burnwick {

/// A notification to show now, with the desktop's default sound. Plain text in UTF-8, without markup.
struct UserNotification {
    std::string identifier; ///< a notification replaces an earlier one of the same identifier
    std::string title;
    std::string body;

    bool operator==(const UserNotification &) const = default;
};

/// The desktop's notifications. Main thread only.
///
/// Operations call `answer` exactly once, on the main thread and after the call returned; not after the
/// center is destroyed. They take seconds at most, unless they wait for the user. Neither answers nor
/// handlers may destroy it.
class NotificationCenter {
public:
    enum class Authorization {
        notDetermined, ///< no server replies, or the user was not asked yet
        denied,        ///< the user switched this application's notifications off
        authorized,
    };
    struct AuthorizationOutcome {
        bool granted = false;
        std::optional<std::string> error; ///< why it is not determined; present only when not granted
    };
    /// Called when the user clicks a notification, with the desktop's permission to raise a window: an
    /// activation token, empty when the desktop issues none.
    using ActivateHandler = std::function<void(const std::string &activationToken)>;

    virtual ~NotificationCenter() = default;

    virtual void readAuthorization(std::function<void(Authorization)> answer) = 0;
    /// Asks the user for alerts with sound, on systems that have such a question.
    virtual void requestAuthorization(std::function<void(AuthorizationOutcome)> answer) = 0;
    /// The handler is called when the authorization may have changed.
    virtual void setAuthorizationChangedHandler(std::function<void()> handler) = 0;

    /// Shows it, also while the application is in front. The answer's error is absent when the desktop has
    /// accepted the notification. `answer` must not be null.
    virtual void add(const UserNotification &notification,
                     std::function<void(std::optional<std::string> error)> answer) = 0;
    virtual void setActivateHandler(ActivateHandler handler) = 0;
};

} // namespace burnwick
