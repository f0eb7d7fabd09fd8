// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DirectoryEventSource.h"

#include <filesystem>
#include <memory>

namespace burnwick {

/// Directory events from inotify. Follows the directory itself when it is renamed, not its path.
class InotifyDirectoryEventSource final : public DirectoryEventSource {
public:
    /// Null when the path is no readable directory or the system is out of descriptors or watches.
    [[nodiscard]] static std::unique_ptr<InotifyDirectoryEventSource> open(const std::filesystem::path &path);

    InotifyDirectoryEventSource(const InotifyDirectoryEventSource &) = delete;
    InotifyDirectoryEventSource &operator=(const InotifyDirectoryEventSource &) = delete;
    ~InotifyDirectoryEventSource() override;

    [[nodiscard]] bool wait() override;
    void wake() noexcept override;
    /// The inotify instance.
    [[nodiscard]] int descriptor() const noexcept override { return m_inotify; }

private:
    InotifyDirectoryEventSource();
    [[nodiscard]] bool readBatch();

    int m_inotify;
    int m_wake;           ///< an event descriptor, readable once wake() was called
    bool m_ended = false; ///< the directory is gone
};

} // namespace burnwick
