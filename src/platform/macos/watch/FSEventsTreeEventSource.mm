// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#import <CoreServices/CoreServices.h>

#include "platform/FileIdentity.h"
#include "platform/Platform.h"
#include "platform/macos/foundation/MainThreadCalls.h"
#include "platform/macos/foundation/Text.h"
#include "platform/macos/rules/TreeEventRules.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include <unistd.h>

namespace burnwick {

namespace {

// The rules are compiled where these constants are not at hand.
static_assert(fsevents::MustScanSubDirs == kFSEventStreamEventFlagMustScanSubDirs);
static_assert(fsevents::UserDropped == kFSEventStreamEventFlagUserDropped);
static_assert(fsevents::KernelDropped == kFSEventStreamEventFlagKernelDropped);
static_assert(fsevents::EventIdsWrapped == kFSEventStreamEventFlagEventIdsWrapped);
static_assert(fsevents::RootChanged == kFSEventStreamEventFlagRootChanged);
static_assert(fsevents::Mount == kFSEventStreamEventFlagMount);
static_assert(fsevents::Unmount == kFSEventStreamEventFlagUnmount);
static_assert(fsevents::ItemIsFile == kFSEventStreamEventFlagItemIsFile);
static_assert(fsevents::ItemIsDir == kFSEventStreamEventFlagItemIsDir);
static_assert(fsevents::ItemIsSymlink == kFSEventStreamEventFlagItemIsSymlink);

// After a first event, those of this time arrive together.
constexpr CFTimeInterval batchSeconds = 0.5;

/// Returns the identity of a folder that can be watched.
std::optional<FileIdentity> watchableAt(const std::filesystem::path &path) {
    std::error_code error;
    const bool isWatchable =
        std::filesystem::is_directory(path, error) && access(path.c_str(), R_OK | X_OK) == 0;
    return isWatchable ? identityOf(path) : std::nullopt;
}

/// A root as it was found.
struct FoundRoot {
    std::filesystem::path path;
    std::optional<FileIdentity> identity; ///< null if it could not be watched
};

/// Events of trees from FSEvents, on the main dispatch queue, which the event loop of a program with windows
/// serves.
class FSEventsTreeEventSource final : public TreeEventSource {
public:
    FSEventsTreeEventSource(std::vector<FoundRoot> found, std::vector<WatchedRoot> roots,
                            const std::function<void()> &onChange)
        : m_found(std::move(found))
        , m_roots(std::move(roots))
        , m_announce(m_calls.queued(onChange)) {
        FSEventStreamContext context{0, this, nullptr, nullptr, nullptr};
        NSMutableArray<NSString *> *const paths = [NSMutableArray array];
        for (const WatchedRoot &root : m_roots)
            [paths addObject:toNSString(root.resolved)];
        m_stream =
            FSEventStreamCreate(nullptr, addEvents, &context, (__bridge CFArrayRef)paths,
                                kFSEventStreamEventIdSinceNow, batchSeconds,
                                kFSEventStreamCreateFlagFileEvents | kFSEventStreamCreateFlagWatchRoot |
                                    kFSEventStreamCreateFlagNoDefer);
        if (m_stream == nullptr)
            return;
        FSEventStreamSetDispatchQueue(m_stream, dispatch_get_main_queue());
        m_hasStarted = FSEventStreamStart(m_stream);
    }
    ~FSEventsTreeEventSource() override {
        if (m_stream == nullptr)
            return;
        if (m_hasStarted)
            FSEventStreamStop(m_stream);
        FSEventStreamInvalidate(m_stream);
        FSEventStreamRelease(m_stream);
    }
    FSEventsTreeEventSource(const FSEventsTreeEventSource &) = delete;
    FSEventsTreeEventSource &operator=(const FSEventsTreeEventSource &) = delete;

    /// Returns whether the stream was made and started.
    [[nodiscard]] bool hasStarted() const { return m_hasStarted; }

    [[nodiscard]] bool isAt(const std::vector<std::filesystem::path> &roots) const override {
        return !m_hasRootChanged &&
               std::ranges::equal(roots, m_found, [](const auto &path, const FoundRoot &root) {
                   return path == root.path && watchableAt(path) == root.identity;
               });
    }
    [[nodiscard]] bool isComplete() const override { return true; }
    [[nodiscard]] TreeChanges take() override {
        m_isAnnounced = false;
        return std::exchange(m_changes, {});
    }

private:
    static void addEvents(ConstFSEventStreamRef /*stream*/, void *source, size_t count, void *paths,
                          const FSEventStreamEventFlags *flags, const FSEventStreamEventId * /*ids*/) {
        auto *const self = static_cast<FSEventsTreeEventSource *>(source);
        for (size_t i = 0; i < count; ++i) {
            addTreeEvent(self->m_changes, self->m_roots, static_cast<char **>(paths)[i], flags[i]);
            self->m_hasRootChanged |= (flags[i] & fsevents::RootChanged) != 0;
        }
        if (!std::exchange(self->m_isAnnounced, true))
            self->m_announce();
    }

    std::vector<FoundRoot> m_found;
    std::vector<WatchedRoot> m_roots; ///< those that can be watched
    MainThreadCalls m_calls;
    std::function<void()> m_announce; ///< queues the handler: it may destroy the stream
    FSEventStreamRef m_stream = nullptr;
    TreeChanges m_changes;
    bool m_hasStarted = false;
    bool m_hasRootChanged = false;
    bool m_isAnnounced = false;
};

} // namespace

std::unique_ptr<TreeEventSource>
platform::openTreeEventSource(const std::vector<std::filesystem::path> &roots,
                              std::function<void()> onChange) {
    std::vector<FoundRoot> found;
    std::vector<WatchedRoot> watched;
    for (const std::filesystem::path &path : roots) {
        // Before the stream is made: if another directory replaces this one meanwhile, isAt() is false.
        const FoundRoot &root = found.emplace_back(FoundRoot{path, watchableAt(path)});
        std::error_code error;
        const auto resolved = std::filesystem::canonical(path, error);
        if (root.identity && !error)
            watched.push_back({path, resolved.native()});
    }
    if (watched.empty())
        return nullptr;
    auto source = std::make_unique<FSEventsTreeEventSource>(std::move(found), std::move(watched), onChange);
    return source->hasStarted() ? std::move(source) : nullptr;
}

} // namespace burnwick
