// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/FileIdentity.h"
#include "platform/Platform.h"

#include <QtCore/QLoggingCategory>
#include <QtCore/QSocketNotifier>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstring>
#include <map>
#include <utility>
#include <vector>

#include <sys/inotify.h>
#include <unistd.h>

namespace burnwick {

namespace {

namespace fs = std::filesystem;

Q_LOGGING_CATEGORY(watchLog, "burnwick.watch")

constexpr std::uint32_t folderEvents =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_MODIFY | IN_ATTRIB | IN_ONLYDIR;
constexpr std::uint32_t rootEvents = folderEvents | IN_MOVE_SELF;
constexpr std::size_t batchBytes = 4096;
constexpr std::size_t longestEvent = sizeof(inotify_event) + NAME_MAX + 1;

/// Returns the identity of a folder that can be watched.
std::optional<FileIdentity> watchableAt(const fs::path &path) {
    const auto identity = identityOf(path);
    return identity && access(path.c_str(), R_OK | X_OK) == 0 ? identity : std::nullopt;
}

struct Root {
    fs::path path;
    std::optional<FileIdentity> identity; ///< null if nothing can be watched there
    int watch = -1;                       ///< -1 without one
    bool hasEnded = false;
};

/// Events of trees from inotify, with one watch for each folder. A watch belongs to the folder and not to
/// its path, so that moved folders lose their watches and get new ones.
class InotifyTreeEventSource final : public TreeEventSource {
public:
    /// Takes the descriptor over, which watches the roots already.
    InotifyTreeEventSource(int inotify, std::vector<Root> roots, std::function<void()> onChange)
        : m_inotify(inotify)
        , m_roots(std::move(roots))
        , m_onChange(std::move(onChange))
        , m_notifier(new QSocketNotifier(inotify, QSocketNotifier::Read)) {
        QObject::connect(m_notifier, &QSocketNotifier::activated, m_notifier, [this] {
            m_notifier->setEnabled(false);
            const auto call = m_onChange; // the call may destroy this object
            call();
        });
        m_isComplete =
            std::ranges::none_of(m_roots, [](const Root &root) { return root.identity && root.watch == -1; });
        watchRoots();
    }
    ~InotifyTreeEventSource() override {
        m_notifier->setEnabled(false);
        m_notifier->deleteLater(); // it may be the caller
        close(m_inotify);
    }
    InotifyTreeEventSource(const InotifyTreeEventSource &) = delete;
    InotifyTreeEventSource &operator=(const InotifyTreeEventSource &) = delete;

    [[nodiscard]] bool isAt(const std::vector<fs::path> &roots) const override {
        return std::ranges::equal(roots, m_roots, [](const fs::path &path, const Root &root) {
            return path == root.path && !root.hasEnded && watchableAt(path) == root.identity;
        });
    }
    [[nodiscard]] bool isComplete() const override { return m_isComplete; }
    [[nodiscard]] TreeChanges take() override;

private:
    void watchRoots();
    void watchTree(const fs::path &top, std::uint32_t events = folderEvents | IN_DONT_FOLLOW);
    void unwatchTree(const fs::path &top);
    void watchAgain();
    void forget(int watch);
    void noteFailure(int error);
    void apply(const inotify_event &event, const char *name, TreeChanges &changes);

    int m_inotify;
    std::vector<Root> m_roots;
    std::function<void()> m_onChange;
    QSocketNotifier *m_notifier;       ///< disabled between the handler's call and take()
    std::map<int, fs::path> m_folders; ///< by watch
    /// The same with a slash behind the path: a folder and those below it are neighbours.
    std::set<std::pair<std::string, int>> m_watches;
    bool m_isComplete = true;
    bool m_hasWarned = false;
};

void InotifyTreeEventSource::watchRoots() {
    for (const Root &root : m_roots) {
        if (root.watch != -1 && !root.hasEnded)
            watchTree(root.path, rootEvents);
    }
}

/// Watches the folder for these events, and those below it, except what is watched under that path already.
void InotifyTreeEventSource::watchTree(const fs::path &top, std::uint32_t events) {
    std::vector<fs::path> pending{top};
    while (!pending.empty()) {
        const fs::path folder = std::move(pending.back());
        pending.pop_back();
        const int watch = inotify_add_watch(m_inotify, folder.c_str(),
                                            std::exchange(events, folderEvents | IN_DONT_FOLLOW));
        if (watch == -1) {
            noteFailure(errno);
            continue;
        }
        if (const auto known = m_folders.find(watch); known != m_folders.end() && known->second == folder)
            continue;
        forget(watch); // under its former path: it was found here before the event of its move was read
        m_folders.emplace(watch, folder);
        m_watches.emplace(folder.native() + '/', watch);
        // After the watch was added: what is created meanwhile is in this list or reported.
        std::error_code error;
        fs::directory_iterator entry(folder, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
            std::error_code unknownType;
            if (entry->is_directory(unknownType))
                pending.push_back(entry->path());
        }
        if (error)
            noteFailure(error.value());
    }
}

void InotifyTreeEventSource::unwatchTree(const fs::path &top) {
    const std::string prefix = top.native() + '/';
    for (auto next = m_watches.lower_bound({prefix, 0});
         next != m_watches.end() && next->first.starts_with(prefix);) {
        const int watch = (next++)->second;
        inotify_rm_watch(m_inotify, watch);
        forget(watch);
    }
}

void InotifyTreeEventSource::forget(int watch) {
    const auto folder = m_folders.find(watch);
    if (folder == m_folders.end())
        return;
    m_watches.erase({folder->second.native() + '/', watch});
    m_folders.erase(folder);
}

/// After lost events: watches all folders that are now in the tree, and no others.
void InotifyTreeEventSource::watchAgain() {
    const auto before = std::exchange(m_folders, {});
    m_watches.clear();
    watchRoots();
    for (const auto &[watch, folder] : before) {
        if (!m_folders.contains(watch))
            inotify_rm_watch(m_inotify, watch);
    }
    for (Root &root : m_roots)
        root.hasEnded |= root.watch != -1 && !m_folders.contains(root.watch);
}

void InotifyTreeEventSource::noteFailure(int error) {
    if (error == ENOENT || error == ENOTDIR)
        return; // removed or replaced meanwhile, which is reported
    m_isComplete = false;
    if (error == ENOSPC && !std::exchange(m_hasWarned, true))
        qCWarning(watchLog,
                  "Changes below %s may be seen late: the limit fs.inotify.max_user_watches is reached",
                  m_roots.front().path.c_str());
}

void InotifyTreeEventSource::apply(const inotify_event &event, const char *name, TreeChanges &changes) {
    const auto watched = m_folders.find(event.wd);
    if ((event.mask & IN_Q_OVERFLOW) != 0) {
        changes.isEverything = true;
        watchAgain();
    } else if (watched == m_folders.end()) {
        // Its watch was removed.
    } else if (event.len == 0) { // of the folder itself
        changes.isEverything = true;
        const auto root = std::ranges::find(m_roots, event.wd, &Root::watch);
        if (root != m_roots.end() && (event.mask & (IN_IGNORED | IN_MOVE_SELF)) != 0) {
            root->hasEnded = true;
            unwatchTree(root->path);
        }
    } else if (const fs::path path = watched->second / name; (event.mask & IN_ISDIR) == 0) {
        changes.files.insert(path);
    } else {
        changes.isEverything = true;
        if ((event.mask & (IN_MOVED_FROM | IN_DELETE)) != 0)
            unwatchTree(path);
        else
            watchTree(path);
    }
}

TreeChanges InotifyTreeEventSource::take() {
    TreeChanges changes;
    std::array<char, batchBytes> batch;
    ssize_t size = 0;
    do {
        size = read(m_inotify, batch.data(), batch.size());
        for (std::size_t at = 0; size > 0 && at < static_cast<std::size_t>(size);) {
            inotify_event event;
            std::memcpy(&event, batch.data() + at, sizeof event);
            apply(event, batch.data() + at + sizeof event, changes);
            at += sizeof event + event.len;
        }
        // A batch with room for another event was all that was pending. Reading until nothing is left would
        // not end while another program writes fast.
    } while (size > static_cast<ssize_t>(batchBytes - longestEvent));
    m_notifier->setEnabled(!std::ranges::all_of(m_roots, &Root::hasEnded));
    return changes;
}

} // namespace

std::unique_ptr<TreeEventSource> platform::openTreeEventSource(const std::vector<fs::path> &roots,
                                                               std::function<void()> onChange) {
    const int inotify = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (inotify == -1)
        return nullptr;
    std::vector<Root> watched;
    for (const fs::path &path : roots) {
        // Before the watch is added: if another directory replaces this one meanwhile, isAt() is false.
        Root &root = watched.emplace_back(Root{path, watchableAt(path)});
        if (root.identity)
            root.watch = inotify_add_watch(inotify, path.c_str(), rootEvents);
    }
    if (std::ranges::all_of(watched, [](const Root &root) { return root.watch == -1; })) {
        close(inotify);
        return nullptr;
    }
    return std::make_unique<InotifyTreeEventSource>(inotify, std::move(watched), std::move(onChange));
}

} // namespace burnwick
