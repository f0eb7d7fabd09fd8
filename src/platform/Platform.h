// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ApplicationInstance.h"
#include "platform/ApplicationStartup.h"
#include "platform/BarExtension.h"
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
#include "platform/TreeEventSource.h"
#include "platform/UserDefaults.h"
#include "platform/WindowChrome.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

/// Makes the backends of the system that the program was built for; the rooms of each system define these
/// functions. Those named make..., except makeApplicationStartup(), and those named open... need a running
/// application object. A program links only the rooms whose functions it calls, so that the report loads no
/// widgets.
namespace burnwick::platform {

[[nodiscard]] std::unique_ptr<ApplicationInstance> makeApplicationInstance();
[[nodiscard]] std::unique_ptr<ApplicationStartup> makeApplicationStartup();
/// Null where the desktop has no such extension, or it is not installed.
[[nodiscard]] std::unique_ptr<BarExtension> makeBarExtension();
[[nodiscard]] std::unique_ptr<DesktopAppearance> makeDesktopAppearance();
[[nodiscard]] std::unique_ptr<DesktopSettings> makeDesktopSettings();
[[nodiscard]] std::unique_ptr<LoginItem> makeLoginItem();
[[nodiscard]] std::unique_ptr<NotificationCenter> makeNotificationCenter();
[[nodiscard]] std::unique_ptr<SleepMonitor> makeSleepMonitor();
[[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem();
[[nodiscard]] std::unique_ptr<TerminalLauncher> makeTerminalLauncher();
/// Null where the window manager decorates windows.
[[nodiscard]] std::unique_ptr<WindowChrome> makeWindowChrome();
[[nodiscard]] std::unique_ptr<UserDefaults> makeUserDefaults(UserDefaults::Access access);
/// Returns the store in which Claude Code keeps the login. On Linux that may be a file in one of its folders
/// of configuration; removes temporary files that a crash has left there.
[[nodiscard]] std::unique_ptr<SecretStore> makeSecretStore(ConfigurationFolders configurationFolders);

/// See OpenDirectoryEventSource.
[[nodiscard]] std::unique_ptr<DirectoryEventSource>
openDirectoryEventSource(const std::filesystem::path &directory, std::function<void()> onChange);
/// See OpenTreeEventSource.
[[nodiscard]] std::unique_ptr<TreeEventSource>
openTreeEventSource(const std::vector<std::filesystem::path> &roots, std::function<void()> onChange);

/// Needs no application object.
[[nodiscard]] ReleaseForm releaseForm();

} // namespace burnwick::platform
