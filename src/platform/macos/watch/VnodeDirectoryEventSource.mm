// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#import <Foundation/Foundation.h>

#include "platform/Platform.h"

#include <memory>
#include <optional>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace burnwick {

namespace {

/// A file's device and number, which a rename keeps.
using Identity = std::pair<dev_t, ino_t>;

std::optional<Identity> identityOf(const struct stat &status) {
    return Identity(status.st_dev, status.st_ino);
}

/// Events of the directory's vnode, on the main dispatch queue, which the event loop of a program with
/// windows serves. The open descriptor keeps the directory's number from reuse, so isAt() needs no events of
/// its end.
class VnodeDirectoryEventSource final : public DirectoryEventSource {
public:
    /// Takes the descriptor over.
    VnodeDirectoryEventSource(int descriptor, std::function<void()> onChange)
        : m_descriptor(descriptor)
        , m_onChange(std::make_shared<std::function<void()>>(std::move(onChange)))
        , m_source(dispatch_source_create(DISPATCH_SOURCE_TYPE_VNODE, static_cast<std::uintptr_t>(descriptor),
                                          DISPATCH_VNODE_WRITE, dispatch_get_main_queue())) {
        struct stat status {};
        if (fstat(descriptor, &status) == 0)
            m_directory = identityOf(status);
        dispatch_source_set_event_handler(m_source, [handler = m_onChange] {
            const auto call = *handler; // the call may end the source
            if (call)
                call();
        });
        // The system may still use it until then.
        dispatch_source_set_cancel_handler(m_source, ^{
          close(descriptor);
        });
        dispatch_resume(m_source);
    }
    ~VnodeDirectoryEventSource() override {
        *m_onChange = nullptr;
        dispatch_source_cancel(m_source);
    }
    VnodeDirectoryEventSource(const VnodeDirectoryEventSource &) = delete;
    VnodeDirectoryEventSource &operator=(const VnodeDirectoryEventSource &) = delete;

    [[nodiscard]] bool isAt(const std::filesystem::path &path) const override {
        struct stat status {};
        return m_directory && stat(path.c_str(), &status) == 0 && identityOf(status) == m_directory;
    }
    [[nodiscard]] int descriptor() const noexcept override { return m_descriptor; }

private:
    int m_descriptor;
    std::shared_ptr<std::function<void()>> m_onChange; ///< of null after the source's end
    dispatch_source_t m_source;
    std::optional<Identity> m_directory;
};

} // namespace

std::unique_ptr<DirectoryEventSource>
platform::openDirectoryEventSource(const std::filesystem::path &directory, std::function<void()> onChange) {
    const int descriptor = open(directory.c_str(), O_EVTONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor == -1)
        return nullptr;
    return std::make_unique<VnodeDirectoryEventSource>(descriptor, std::move(onChange));
}

} // namespace burnwick
