// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DirectoryEventSource.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <utility>

#include <sys/types.h>

namespace burnwick {

/// Directory events from inotify. Follows the directory when it is renamed, not its path.
class InotifyDirectoryEventSource final : public DirectoryEventSource {
public:
    /// Returns null when the path is no readable directory or the system is out of descriptors or watches.
    [[nodiscard]] static std::unique_ptr<InotifyDirectoryEventSource> open(const std::filesystem::path &path);

    InotifyDirectoryEventSource(const InotifyDirectoryEventSource &) = delete;
    InotifyDirectoryEventSource &operator=(const InotifyDirectoryEventSource &) = delete;
    ~InotifyDirectoryEventSource() override;

    [[nodiscard]] bool wait() override;
    void wake() noexcept override;
    [[nodiscard]] bool isAt(const std::filesystem::path &path) const override;
    /// The inotify instance.
    [[nodiscard]] int descriptor() const noexcept override { return m_inotify; }

private:
    /// A file as the file system knows it, whatever its path.
    using Identity = std::pair<dev_t, ino_t>;

    InotifyDirectoryEventSource();
    [[nodiscard]] static std::optional<Identity> identityOf(const std::filesystem::path &path);
    [[nodiscard]] bool readBatch();

    int m_inotify;
    int m_wake; ///< an event descriptor, readable after wake()
    std::optional<Identity> m_directory;
    bool m_ended = false; ///< the directory was deleted or moved, or events were lost
};

} // namespace burnwick
