// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace burnwick {

/// What the running program can be told to do.
enum class ApplicationAction {
    showWindow,  ///< come to the front
    showSettings ///< "settings": the settings in front
};

/// The action of that name in desktop entries and on the command line; absent when there is none.
[[nodiscard]] constexpr std::optional<ApplicationAction> applicationActionNamed(std::string_view name) {
    return name == "settings" ? std::optional(ApplicationAction::showSettings) : std::nullopt;
}
/// The inverse; empty for the action without a name, which is to come to the front.
[[nodiscard]] constexpr std::string_view nameOf(ApplicationAction action) {
    return action == ApplicationAction::showSettings ? "settings" : "";
}

/// The desktop's permission to raise a window and its mark of the click that asked for it; empty where it
/// gave none. Each is good for one use.
struct StartupActivation {
    std::string token;     ///< Wayland's
    std::string startupId; ///< X11's, which Qt itself uses in the process that was started

    bool operator==(const StartupActivation &) const = default;
};

/// What a start of the program, or the desktop, asks of the program that runs.
struct ApplicationRequest {
    ApplicationAction action = ApplicationAction::showWindow;
    StartupActivation activation;

    bool operator==(const ApplicationRequest &) const = default;
};

/// What became of a start.
enum class InstanceClaim {
    first,        ///< this process is the one that runs
    unknown,      ///< no telling here whether another one runs
    handedOver,   ///< another one runs and has done what was asked
    notHandedOver ///< another one runs and did not answer
};

/// Sees to it that one instance of the program runs in a user's session. Main thread only.
class ApplicationInstance {
public:
    using RequestHandler = std::function<void(const ApplicationRequest &request)>;

    virtual ~ApplicationInstance() = default;

    /// Claims to be the one; when another one is, hands it the request. To be called once. Answers once, on
    /// the main thread, after the call returned and within seconds; no answer comes after this object is
    /// destroyed.
    virtual void claim(const ApplicationRequest &request,
                       std::function<void(InstanceClaim outcome)> answer) = 0;
    /// Called with each request of later starts and of the desktop. Those that came before are not lost: the
    /// handler gets them at once.
    virtual void setRequestHandler(RequestHandler handler) = 0;
};

} // namespace burnwick
