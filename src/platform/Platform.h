// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DirectoryEventSource.h"
#include "platform/StatusItem.h"

#include <filesystem>
#include <memory>

/// Makes the backends of the system that the program was built for; each system's folder defines these.
namespace burnwick::platform {

/// Needs a running application object.
[[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem();

/// See OpenDirectoryEventSource.
[[nodiscard]] std::unique_ptr<DirectoryEventSource>
openDirectoryEventSource(const std::filesystem::path &path);

} // namespace burnwick::platform
