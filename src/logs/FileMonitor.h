// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DirectoryEventSource.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <thread>

namespace burnwick {

/// Tells that the entries of one directory changed: files or folders in it were created, removed or moved.
/// Changes inside them are not announced. It reports no errors.
///
/// The handler runs on a private thread, one call at a time, also across stop() and start(); once for each
/// batch of events. A call that is under way may outlast stop(). None is running once the destructor has
/// returned, except the one that destroyed the monitor. The functions here are called by one thread at a
/// time, which may be the handler's.
class FileMonitor final {
public:
    /// Does not start watching.
    FileMonitor(std::filesystem::path path, std::function<void()> onChange, OpenDirectoryEventSource open);
    FileMonitor(const FileMonitor &) = delete;
    FileMonitor &operator=(const FileMonitor &) = delete;
    /// Stops, and waits for a running handler to return.
    ~FileMonitor();

    /// Begins to watch unless it does already. A watched directory that is no longer the one at the path, as
    /// when a folder above it was moved, is given up for that one. Without a readable directory at the path
    /// it stays idle, as it does after the watched directory was deleted; nothing is retried, a later start()
    /// opens the path anew.
    void start();
    /// Ends watching. The descriptor is closed soon afterwards, on the private thread.
    void stop();

    /// The descriptor in use, -1 when it is closed.
    [[nodiscard]] int fileDescriptor() const;

private:
    class Worker;

    std::filesystem::path m_path;
    OpenDirectoryEventSource m_open;
    // Shared with the thread, which outlives a monitor that is destroyed by its handler.
    std::shared_ptr<Worker> m_worker;
    std::thread m_thread; ///< from the first successful start on
};

} // namespace burnwick
