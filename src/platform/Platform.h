// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ApplicationInstance.h"
#include "platform/DesktopAppearance.h"
#include "platform/DesktopSettings.h"
#include "platform/DirectoryEventSource.h"
#include "platform/LoginItem.h"
#include "platform/NotificationCenter.h"
#include "platform/ReleaseForm.h"
#include "platform/SecretStore.h"
#include "platform/SleepMonitor.h"
#include "platform/StatusItem.h"
#include "platform/TerminalLauncher.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

/// Makes the backends of the system that the program was built for; the rooms of each system define these
/// functions. Those named make... and openDirectoryEventSource() need a running application object. A program
/// links only the rooms whose functions it calls, so that the report loads no widgets.
namespace burnwick::platform {

[[nodiscard]] std::unique_ptr<ApplicationInstance> makeApplicationInstance();
[[nodiscard]] std::unique_ptr<DesktopAppearance> makeDesktopAppearance();
[[nodiscard]] std::unique_ptr<DesktopSettings> makeDesktopSettings();
[[nodiscard]] std::unique_ptr<LoginItem> makeLoginItem();
[[nodiscard]] std::unique_ptr<NotificationCenter> makeNotificationCenter();
[[nodiscard]] std::unique_ptr<SleepMonitor> makeSleepMonitor();
[[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem();
[[nodiscard]] std::unique_ptr<TerminalLauncher> makeTerminalLauncher();
/// Returns the store in which Claude Code keeps the login of the user of that home directory. Removes
/// temporary files that a crash has left beside it.
[[nodiscard]] std::unique_ptr<SecretStore> makeSecretStore(const std::filesystem::path &home);

/// See OpenDirectoryEventSource.
[[nodiscard]] std::unique_ptr<DirectoryEventSource>
openDirectoryEventSource(const std::filesystem::path &directory, std::function<void()> onChange);

/// Needs no application object.
[[nodiscard]] ReleaseForm releaseForm();

/// The result of a trial of the display.
struct DisplayTrial {
    std::string fault; ///< why no windows can be shown, in one sentence; empty when they can
    /// Keep it until the application object exists: an X server restarts when its last client disconnects,
    /// and rejects connections meanwhile.
    std::shared_ptr<void> connection;
};

/// Tries whether windows can be shown. Without a display that replies, Qt would abort this process in the
/// constructor of its application object. Blocks without limit while an X server has accepted the connection
/// and does not respond, as Qt would.
[[nodiscard]] DisplayTrial tryDisplay();

/// Disables the session bus for this process when the bus does not respond: calls would block for long or
/// without limit. Takes a few milliseconds, or 2 s when the bus does not respond. Call it before the
/// application object exists, and before this process uses any of the desktop's services.
void disableUnresponsiveBus();

/// Returns what the desktop passed to this process at its start. Call it before the application object
/// exists, which removes a part of it.
[[nodiscard]] StartupActivation startupActivation();
/// Removes it from the environment, so that programs started by this one do not inherit it. Call it once the
/// application object exists.
void forgetStartupActivation();
/// Announces that this process shows no window after all: X11's desktops would show a busy pointer for a
/// while. Needs a running application object.
void concludeStartup(const StartupActivation &activation);

} // namespace burnwick::platform
