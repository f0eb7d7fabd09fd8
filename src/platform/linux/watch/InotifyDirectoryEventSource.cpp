// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/watch/InotifyDirectoryEventSource.h"

#include "platform/Platform.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>

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

} // namespace

InotifyDirectoryEventSource::InotifyDirectoryEventSource()
    : m_inotify(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    , m_wake(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}

std::unique_ptr<InotifyDirectoryEventSource>
InotifyDirectoryEventSource::open(const std::filesystem::path &path) {
    std::unique_ptr<InotifyDirectoryEventSource> source(new InotifyDirectoryEventSource);
    // Before the watch: a directory that replaces this one meanwhile is not isAt() the path, and is opened
    // anew.
    source->m_directory = identityOf(path);
    if (source->m_inotify == -1 || source->m_wake == -1 ||
        inotify_add_watch(source->m_inotify, path.c_str(), entryChanges | IN_MOVE_SELF | IN_ONLYDIR) == -1)
        return nullptr;
    return source;
}

InotifyDirectoryEventSource::~InotifyDirectoryEventSource() {
    for (const int descriptor : {m_inotify, m_wake}) {
        if (descriptor != -1)
            close(descriptor);
    }
}

std::optional<InotifyDirectoryEventSource::Identity>
InotifyDirectoryEventSource::identityOf(const std::filesystem::path &path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == -1)
        return std::nullopt;
    return Identity(status.st_dev, status.st_ino);
}

bool InotifyDirectoryEventSource::isAt(const std::filesystem::path &path) const {
    return m_directory && identityOf(path) == m_directory;
}

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

void InotifyDirectoryEventSource::wake() noexcept {
    const std::uint64_t one = 1;
    // Fails only when the counter is full, and then the other thread is awake already.
    static_cast<void>(!write(m_wake, &one, sizeof one));
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

std::unique_ptr<DirectoryEventSource> platform::openDirectoryEventSource(const std::filesystem::path &path) {
    return InotifyDirectoryEventSource::open(path);
}

} // namespace burnwick
