// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DirectoryEventSource.h"

namespace burnwick {

/// Calls a handler when the entries of one directory change: files or folders in it were created, removed or
/// moved. Changes inside them are ignored. Reports no errors. The handler runs on the main thread, once for
/// each batch of events, and may call start() and stop(). Main thread only.
class FileMonitor final {
public:
    /// Does not start watching.
    FileMonitor(std::filesystem::path path, std::function<void()> onChange, OpenDirectoryEventSource open);

    /// Starts watching. Does nothing if the directory at the path is watched already; replaces a watch on
    /// another one, as when a folder above it was moved. Does nothing if no directory at the path can be
    /// read. Never retries, also not after the watched directory was deleted: call start() again.
    void start();
    /// Stops watching and closes the descriptor.
    void stop() { m_source.reset(); }

    /// Returns the open descriptor; -1 when it is closed.
    [[nodiscard]] int fileDescriptor() const { return m_source ? m_source->descriptor() : -1; }

private:
    std::filesystem::path m_path;
    std::function<void()> m_onChange;
    OpenDirectoryEventSource m_open;
    std::unique_ptr<DirectoryEventSource> m_source; ///< null when not watching
};

} // namespace burnwick
