// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DesktopAppearance.h"
#include "platform/DirectoryEventSource.h"
#include "platform/LoginItem.h"
#include "platform/SecretStore.h"
#include "platform/StatusItem.h"
#include "platform/TerminalLauncher.h"

#include <filesystem>
#include <memory>

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

/// Needs a running application object.
[[nodiscard]] std::unique_ptr<TerminalLauncher> makeTerminalLauncher();

/// The store in which Claude Code keeps the login of the user of that home directory. Needs a running
/// application object.
[[nodiscard]] std::unique_ptr<SecretStore> makeSecretStore(const std::filesystem::path &home);

/// Needs a running application object.
[[nodiscard]] std::unique_ptr<LoginItem> makeLoginItem();

} // namespace burnwick::platform
