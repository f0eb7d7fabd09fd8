// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/InotifyDirectoryEventSource.h"

namespace burnwick {

std::unique_ptr<DirectoryEventSource> platform::openDirectoryEventSource(const std::filesystem::path &path) {
    return InotifyDirectoryEventSource::open(path);
}

} // namespace burnwick
