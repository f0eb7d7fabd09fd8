// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DirectoryEventSource.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <thread>

namespace burnwick {

/// Calls a handler when the entries of one directory change: files or folders in it were created, removed or
/// moved. Changes inside them are ignored. Reports no errors.
///
/// The handler runs on a private thread, once for each batch of events, and never twice at a time, even
/// across stop() and start(). A running call may outlast stop(), but not the destructor. The functions here
/// are called by one thread at a time; the handler may call all but the destructor.
class FileMonitor final {
public:
    /// Does not start watching.
    FileMonitor(std::filesystem::path path, std::function<void()> onChange, OpenDirectoryEventSource open);
    FileMonitor(const FileMonitor &) = delete;
    FileMonitor &operator=(const FileMonitor &) = delete;
    /// Stops, and waits for a running handler to return.
    ~FileMonitor();

    /// Starts watching. Does nothing if the directory at the path is watched already; replaces a watch on
    /// another one, as when a folder above it was moved. Does nothing if no directory at the path can be
    /// read. Never retries, also not after the watched directory was deleted: call start() again.
    void start();
    /// Stops watching. The private thread closes the descriptor soon afterwards.
    void stop();

    /// The open descriptor; -1 when it is closed.
    [[nodiscard]] int fileDescriptor() const;

private:
    class Worker;

    std::filesystem::path m_path;
    OpenDirectoryEventSource m_open;
    std::unique_ptr<Worker> m_worker;
    std::thread m_thread; ///< from the first successful start on
};

} // namespace burnwick
