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
#include <memory>
#include <string>

/// Makes the backends of the system that the program was built for; each system's folder defines these.
/// One object file each, so that a program has only what it calls: the report is to load no widgets.
namespace burnwick::platform {

/// Needs a running application object.
[[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem();

/// See OpenDirectoryEventSource.
[[nodiscard]] std::unique_ptr<DirectoryEventSource>
openDirectoryEventSource(const std::filesystem::path &path);

/// Needs a running application object.
[[nodiscard]] std::unique_ptr<DesktopAppearance> makeDesktopAppearance();

[[nodiscard]] std::unique_ptr<DesktopSettings> makeDesktopSettings();

/// Needs a running application object.
[[nodiscard]] std::unique_ptr<TerminalLauncher> makeTerminalLauncher();

/// Needs a running application object.
[[nodiscard]] std::unique_ptr<NotificationCenter> makeNotificationCenter();

/// The store in which Claude Code keeps the login of the user of that home directory. Removes what a crash of
/// a former start has left beside it. Needs a running application object.
[[nodiscard]] std::unique_ptr<SecretStore> makeSecretStore(const std::filesystem::path &home);

/// Needs a running application object.
[[nodiscard]] std::unique_ptr<LoginItem> makeLoginItem();

/// Needs a running application object.
[[nodiscard]] std::unique_ptr<SleepMonitor> makeSleepMonitor();

/// Needs a running application object.
[[nodiscard]] std::unique_ptr<ApplicationInstance> makeApplicationInstance();

/// How users of this system get a release.
[[nodiscard]] ReleaseForm releaseForm();

/// What a trial of the display found.
struct DisplayTrial {
    std::string fault; ///< why no windows can be shown, in one sentence; empty where they can
    /// To be kept until the application object exists: an X server whose last client leaves starts anew, and
    /// refuses Qt meanwhile.
    std::shared_ptr<void> connection;
};

/// Looks whether windows can be shown. Without a display that answers, Qt would end this process in a crash
/// as soon as it makes its application object. Blocks while an X server has accepted the connection and does
/// not respond, without limit, as Qt itself would then.
[[nodiscard]] DisplayTrial tryDisplay();

/// Has this process do without a session bus that would keep it waiting for long or without limit. Takes a
/// few milliseconds, or 2 s where the bus does not respond. Before there is an application object, and before
/// anything else of this process uses the desktop's services.
void disableUnresponsiveBus();

/// What the desktop gave this process when it started it. To be read before there is an application object,
/// which takes a part for itself.
[[nodiscard]] StartupActivation startupActivation();
/// Removes it from the environment, so that the programs that this one starts do not take it for theirs. Once
/// there is an application object.
void forgetStartupActivation();
/// Tells the desktop that this start is over, of a process that shows no window: X11's desktops would show a
/// busy pointer for a while. Needs a running application object.
void concludeStartup(const StartupActivation &activation);

} // namespace burnwick::platform
