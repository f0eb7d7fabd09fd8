// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>

#include <memory>
#include <mutex>
#include <utility>

namespace burnwick {

/// Brings the answers of the system's threads to the main thread. The calls go through Qt's event loop: that
/// of a program without windows does not serve the main dispatch queue. Drops the calls that are still queued
/// when this object is destroyed, and later ones. Make and destroy it on the main thread, while the
/// application object exists.
class MainThreadCalls {
public:
    MainThreadCalls() = default;
    ~MainThreadCalls() {
        std::unique_ptr<QObject> receiver; // destroyed without the lock, with what queued calls captured
        const std::lock_guard lock(m_gate->mutex);
        receiver.swap(m_gate->receiver);
    }
    MainThreadCalls(const MainThreadCalls &) = delete;
    MainThreadCalls &operator=(const MainThreadCalls &) = delete;

    /// Returns a function that may be called from any thread, and that calls `function` with its arguments on
    /// the main thread, after it returned.
    template <typename Function>
    [[nodiscard]] auto queued(Function function) const {
        return [gate = m_gate, function = std::move(function)](auto... arguments) {
            const std::lock_guard lock(gate->mutex);
            if (gate->receiver)
                QMetaObject::invokeMethod(
                    gate->receiver.get(), [=] { function(arguments...); }, Qt::QueuedConnection);
        };
    }

private:
    /// Shared with the functions, which may outlive this object. The receiver is not the application object,
    /// which the main thread may be destroying while another thread calls.
    struct Gate {
        std::mutex mutex;
        std::unique_ptr<QObject> receiver = std::make_unique<QObject>(); ///< null after the end
    };

    std::shared_ptr<Gate> m_gate = std::make_shared<Gate>();
};

} // namespace burnwick
