// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QCoreApplication>

#include <memory>
#include <utility>

namespace burnwick {

/// Brings the answers of the system's threads to the main thread. The calls go through Qt's event loop: that
/// of a program without windows does not serve the main dispatch queue. Calls whose owner of this object has
/// ended are dropped. Make and destroy it on the main thread.
class MainThreadCalls {
public:
    /// Returns a function that may be called from any thread, and that calls `function` with its arguments on
    /// the main thread, after it returned.
    template <typename Function>
    [[nodiscard]] auto queued(Function function) const {
        return [alive = std::weak_ptr<int>(m_alive), function = std::move(function)](auto... arguments) {
            // Null at the process's end.
            QCoreApplication *const application = QCoreApplication::instance();
            if (application == nullptr)
                return;
            QMetaObject::invokeMethod(
                application,
                [=] {
                    if (!alive.expired())
                        function(arguments...);
                },
                Qt::QueuedConnection);
        };
    }

private:
    std::shared_ptr<int> m_alive = std::make_shared<int>(0);
};

} // namespace burnwick
