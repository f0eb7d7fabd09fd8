// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/FileMonitor.h"

#include "platform/Process.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <utility>

namespace burnwick {

/// The state that the private thread shares: the sources opened by start(), which it watches one by one.
class FileMonitor::Worker {
public:
    explicit Worker(std::function<void()> onChange)
        : m_onChange(std::move(onChange)) {}

    void run();

    [[nodiscard]] bool isWatching(const std::filesystem::path &path) const {
        const std::lock_guard lock(m_mutex);
        return !m_watches.empty() && !m_watches.back().cancelled && m_watches.back().source->isAt(path);
    }

    void add(std::unique_ptr<DirectoryEventSource> source) {
        const std::lock_guard lock(m_mutex);
        m_watches.push_back({std::move(source)});
        m_wake.notify_one();
    }

    void cancel() {
        const std::lock_guard lock(m_mutex);
        if (m_watches.empty())
            return;
        m_watches.back().cancelled = true;
        m_watches.back().source->wake();
    }

    void quit() {
        cancel();
        const std::lock_guard lock(m_mutex);
        m_quit = true;
        m_wake.notify_one();
    }

    [[nodiscard]] int descriptor() const {
        const std::lock_guard lock(m_mutex);
        return m_watches.empty() ? -1 : m_watches.back().source->descriptor();
    }

private:
    struct Watch {
        std::unique_ptr<DirectoryEventSource> source;
        bool cancelled = false;
    };

    void deliver(std::unique_lock<std::mutex> &lock, const Watch &watch) const;

    const std::function<void()> m_onChange;
    mutable std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<Watch> m_watches; ///< all but the last are cancelled; only the thread removes them
    bool m_quit = false;
};

void FileMonitor::Worker::run() {
    platform::nameThisThread("burnwick.files");
    std::unique_lock lock(m_mutex);
    while (true) {
        m_wake.wait(lock, [this] { return m_quit || !m_watches.empty(); });
        if (m_watches.empty())
            return;
        deliver(lock, m_watches.front());
        m_watches.pop_front();
    }
}

/// Calls the handler, without the lock, until the watch is cancelled or ends by itself.
void FileMonitor::Worker::deliver(std::unique_lock<std::mutex> &lock, const Watch &watch) const {
    while (true) {
        lock.unlock();
        const bool changed = watch.source->wait();
        lock.lock();
        if (watch.cancelled || !changed)
            return;
        lock.unlock();
        m_onChange();
        lock.lock();
    }
}

FileMonitor::FileMonitor(std::filesystem::path path, std::function<void()> onChange,
                         OpenDirectoryEventSource open)
    : m_path(std::move(path))
    , m_open(std::move(open))
    , m_worker(std::make_unique<Worker>(std::move(onChange))) {}

FileMonitor::~FileMonitor() {
    m_worker->quit();
    if (m_thread.joinable())
        m_thread.join();
}

void FileMonitor::start() {
    if (m_worker->isWatching(m_path))
        return;
    m_worker->cancel();
    auto source = m_open(m_path);
    if (!source)
        return;
    try {
        if (!m_thread.joinable())
            m_thread = std::thread([this] { m_worker->run(); });
    } catch (const std::system_error &) {
        return; // No thread can be started; the next start() tries again.
    }
    m_worker->add(std::move(source));
}

void FileMonitor::stop() {
    m_worker->cancel();
}

int FileMonitor::fileDescriptor() const {
    return m_worker->descriptor();
}

} // namespace burnwick
