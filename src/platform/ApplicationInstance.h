// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

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

/// Returns the action of that name in desktop entries and on the command line; absent for an unknown name.
[[nodiscard]] constexpr std::optional<ApplicationAction> applicationActionNamed(std::string_view name) {
    return name == "settings" ? std::optional(ApplicationAction::showSettings) : std::nullopt;
}
/// The inverse; showWindow has no name, for which it returns an empty one.
[[nodiscard]] constexpr std::string_view nameOf(ApplicationAction action) {
    return action == ApplicationAction::showSettings ? "settings" : "";
}

/// The desktop's permission to raise a window and its identifier of the click; empty where the desktop sets
/// none. Each is valid once.
struct StartupActivation {
    std::string token;     ///< Wayland's
    std::string startupId; ///< X11's, which Qt itself uses in the process that was started

    bool operator==(const StartupActivation &) const = default;
};

/// What a start of the program, or the desktop, requests of the running program.
struct ApplicationRequest {
    ApplicationAction action = ApplicationAction::showWindow;
    StartupActivation activation;

    bool operator==(const ApplicationRequest &) const = default;
};

/// The outcome of a start.
enum class InstanceClaim {
    first,        ///< this process is the instance
    unknown,      ///< other instances cannot be seen
    handedOver,   ///< another one runs and has accepted the request
    notHandedOver ///< another one runs and did not reply
};

/// Lets one instance of the program run in a user's session. Main thread only.
class ApplicationInstance {
public:
    using RequestHandler = std::function<void(const ApplicationRequest &request)>;

    virtual ~ApplicationInstance() = default;

    /// Makes this process the instance, or hands the request to the one that is. Call it once. Answers once,
    /// on the main thread, after the call returned and within seconds; the answer is dropped when this object
    /// is destroyed first.
    virtual void claim(const ApplicationRequest &request,
                       std::function<void(InstanceClaim outcome)> answer) = 0;
    /// The handler is called with each request of later starts and of the desktop; within this call with
    /// those that came before.
    virtual void setRequestHandler(RequestHandler handler) = 0;
};

} // namespace burnwick
