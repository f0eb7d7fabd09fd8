// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <optional>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace burnwick {

namespace {

constexpr std::uint32_t entryChanges = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;
// A hundred events with names of ordinary length; more than NAME_MAX + 1 needs for one.
constexpr std::size_t batchBytes = 4096;

/// A file's device and number, which a rename keeps.
using Identity = std::pair<dev_t, ino_t>;

std::optional<Identity> identityOf(const std::filesystem::path &path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == -1)
        return std::nullopt;
    return Identity(status.st_dev, status.st_ino);
}

/// Directory events from inotify, which watches the directory and not its path.
class InotifyDirectoryEventSource final : public DirectoryEventSource {
public:
    explicit InotifyDirectoryEventSource(const std::filesystem::path &path)
        // Before the watch is added: if another directory replaces this one meanwhile, isAt() is false and
        // the caller opens the path again.
        : m_directory(identityOf(path))
        , m_inotify(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
        , m_wake(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC))
        , m_isOpen(m_inotify != -1 && m_wake != -1 &&
                   inotify_add_watch(m_inotify, path.c_str(), entryChanges | IN_MOVE_SELF | IN_ONLYDIR) !=
                       -1) {}
    ~InotifyDirectoryEventSource() override {
        for (const int descriptor : {m_inotify, m_wake}) {
            if (descriptor != -1)
                close(descriptor);
        }
    }
    InotifyDirectoryEventSource(const InotifyDirectoryEventSource &) = delete;
    InotifyDirectoryEventSource &operator=(const InotifyDirectoryEventSource &) = delete;

    /// Returns false when the path is not a readable directory, or the system is out of descriptors or
    /// watches.
    [[nodiscard]] bool isOpen() const { return m_isOpen; }

    [[nodiscard]] bool wait() override;
    void wake() noexcept override {
        const std::uint64_t one = 1;
        // Fails only when the counter is full; the other thread is awake then.
        static_cast<void>(!write(m_wake, &one, sizeof one));
    }
    [[nodiscard]] bool isAt(const std::filesystem::path &path) const override {
        return m_directory && identityOf(path) == m_directory;
    }
    [[nodiscard]] int descriptor() const noexcept override { return m_inotify; }

private:
    [[nodiscard]] bool readBatch();

    std::optional<Identity> m_directory;
    int m_inotify;
    int m_wake; ///< an event descriptor, readable after wake()
    bool m_isOpen;
    bool m_ended = false; ///< the directory was deleted or moved, or events were lost
};

bool InotifyDirectoryEventSource::wait() {
    std::array<pollfd, 2> descriptors{pollfd{m_wake, POLLIN, 0}, pollfd{m_inotify, POLLIN, 0}};
    const auto &[woken, events] = descriptors;
    while (!m_ended) {
        if (poll(descriptors.data(), descriptors.size(), -1) == -1) {
            if (errno == EINTR)
                continue;
            return false;
        }
        if (woken.revents != 0)
            return false;
        if (events.revents != 0 && readBatch())
            return true;
    }
    return false;
}

/// Returns whether the entries changed; sets m_ended after the last event.
bool InotifyDirectoryEventSource::readBatch() {
    std::array<char, batchBytes> batch;
    const ssize_t size = read(m_inotify, batch.data(), batch.size());
    if (size <= 0) {
        m_ended = size == 0 || (errno != EAGAIN && errno != EINTR);
        return false;
    }
    bool changed = false;
    for (std::size_t at = 0; at < static_cast<std::size_t>(size);) {
        inotify_event event;
        std::memcpy(&event, batch.data() + at, sizeof event);
        // After an overflow any entry may have changed.
        changed = changed || (event.mask & (entryChanges | IN_Q_OVERFLOW)) != 0;
        // A moved directory is no longer at the path. An overflow may hide such an event.
        m_ended = m_ended || (event.mask & (IN_IGNORED | IN_MOVE_SELF | IN_Q_OVERFLOW)) != 0;
        at += sizeof event + event.len;
    }
    return changed;
}

} // namespace

std::unique_ptr<DirectoryEventSource> platform::openDirectoryEventSource(const std::filesystem::path &path) {
    auto source = std::make_unique<InotifyDirectoryEventSource>(path);
    return source->isOpen() ? std::move(source) : nullptr;
}

} // namespace burnwick
