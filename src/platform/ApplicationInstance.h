// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ApplicationStartup.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace burnwick {

/// What another start of the program, or the desktop, can request of the running one.
enum class ApplicationAction {
    showWindow,  ///< the window in front
    showSettings ///< "settings": the settings in front
};

/// Returns the action with that name in desktop entries and on the command line; absent for an unknown name.
[[nodiscard]] constexpr std::optional<ApplicationAction> applicationActionNamed(std::string_view name) {
    return name == "settings" ? std::optional(ApplicationAction::showSettings) : std::nullopt;
}
/// Returns the action's name; empty for showWindow, which has none.
[[nodiscard]] constexpr std::string_view nameOf(ApplicationAction action) {
    return action == ApplicationAction::showSettings ? "settings" : "";
}

/// What a start of the program, or the desktop, requests of the running program.
struct ApplicationRequest {
    ApplicationAction action = ApplicationAction::showWindow;
    StartupActivation activation;

    bool operator==(const ApplicationRequest &) const = default;
};

/// The outcome of a start.
enum class InstanceClaim {
    first,        ///< this process is the instance
    unknown,      ///< other instances cannot be found, for instance without a bus that replies
    handedOver,   ///< another process is the instance and has accepted the request
    notHandedOver ///< another process is the instance and did not reply
};

/// Lets one instance of the program run in a user's session. Main thread only.
class ApplicationInstance {
public:
    using RequestHandler = std::function<void(const ApplicationRequest &request)>;

    virtual ~ApplicationInstance() = default;

    /// Makes this process the instance, or forwards the request to the running one. Call it once. Calls
    /// `answer` once, on the main thread, after this call returned and within seconds; not after this object
    /// is destroyed.
    virtual void claim(const ApplicationRequest &request,
                       std::function<void(InstanceClaim outcome)> answer) = 0;
    /// The handler is called with each request of later starts and of the desktop; with earlier ones before
    /// this call returns.
    virtual void setRequestHandler(RequestHandler handler) = 0;
};

} // namespace burnwick
