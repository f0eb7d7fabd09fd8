// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/FileIdentity.h"
#include "platform/Platform.h"

#include <QtCore/QSocketNotifier>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <optional>
#include <utility>

#include <sys/inotify.h>
#include <unistd.h>

namespace burnwick {

namespace {

constexpr std::uint32_t entryChanges = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;
// A hundred events with names of ordinary length; more than NAME_MAX + 1 needs for one.
constexpr std::size_t batchBytes = 4096;

/// Directory events from inotify, which watches the directory and not its path.
class InotifyDirectoryEventSource final : public DirectoryEventSource {
public:
    /// Takes the descriptor over.
    InotifyDirectoryEventSource(int inotify, const std::optional<FileIdentity> &directory,
                                std::function<void()> onChange)
        : m_inotify(inotify)
        , m_directory(directory)
        , m_onChange(std::move(onChange))
        , m_notifier(new QSocketNotifier(inotify, QSocketNotifier::Read)) {
        QObject::connect(m_notifier, &QSocketNotifier::activated, m_notifier, [this] { readEvents(); });
    }
    ~InotifyDirectoryEventSource() override {
        m_notifier->setEnabled(false);
        m_notifier->deleteLater(); // it may be the caller
        close(m_inotify);
    }
    InotifyDirectoryEventSource(const InotifyDirectoryEventSource &) = delete;
    InotifyDirectoryEventSource &operator=(const InotifyDirectoryEventSource &) = delete;

    [[nodiscard]] bool isAt(const std::filesystem::path &path) const override {
        return m_notifier->isEnabled() && m_directory && identityOf(path) == m_directory;
    }
    [[nodiscard]] int descriptor() const noexcept override { return m_inotify; }

private:
    void readEvents();

    int m_inotify;
    std::optional<FileIdentity> m_directory;
    std::function<void()> m_onChange;
    QSocketNotifier *m_notifier; ///< enabled until the watch ends
};

/// Reads all pending events, then calls the handler if the entries changed.
void InotifyDirectoryEventSource::readEvents() {
    std::uint32_t seen = 0;
    std::array<char, batchBytes> batch;
    ssize_t size = 0;
    while ((size = read(m_inotify, batch.data(), batch.size())) > 0) {
        for (std::size_t at = 0; at < static_cast<std::size_t>(size);) {
            inotify_event event;
            std::memcpy(&event, batch.data() + at, sizeof event);
            seen |= event.mask;
            at += sizeof event + event.len;
        }
    }
    // A moved directory is no longer at the path. An overflow may hide such an event.
    const bool canContinue = size < 0 && (errno == EAGAIN || errno == EINTR);
    if (!canContinue || (seen & (IN_IGNORED | IN_MOVE_SELF | IN_Q_OVERFLOW)) != 0)
        m_notifier->setEnabled(false);
    if ((seen & entryChanges) != 0) {
        const auto onChange = m_onChange; // the call may destroy this object
        onChange();
    }
}

} // namespace

std::unique_ptr<DirectoryEventSource>
platform::openDirectoryEventSource(const std::filesystem::path &directory, std::function<void()> onChange) {
    // Before the watch is added: if another directory replaces this one meanwhile, isAt() is false and the
    // caller opens the path again.
    const auto identity = identityOf(directory);
    const int inotify = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (inotify == -1)
        return nullptr;
    if (inotify_add_watch(inotify, directory.c_str(), entryChanges | IN_MOVE_SELF | IN_ONLYDIR) == -1) {
        close(inotify);
        return nullptr;
    }
    return std::make_unique<InotifyDirectoryEventSource>(inotify, identity, std::move(onChange));
}

} // namespace burnwick
