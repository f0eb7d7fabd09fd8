// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "update/Appcast.h"

#include <QMetaObject>
#include <QObject>

#include <functional>
#include <utility>

namespace burnwick {

/// How an updater found an update.
struct ShowingUpdateState {
    bool userInitiated = false; ///< the user started the check
};

/// Announces an update that an updater is about to show: activates the application when the user started the
/// check, and sends a notification otherwise. Create and destroy it on the main thread.
class UserDriverDelegate final : public QObject {
public:
    /// Calls both on the main thread. `activateApplication` brings the program in front of all others.
    UserDriverDelegate(std::function<void()> activateApplication,
                       std::function<void(const QString &displayVersion)> sendUpdateAvailable)
        : m_activateApplication(std::move(activateApplication))
        , m_sendUpdateAvailable(std::move(sendUpdateAvailable)) {}

    /// Whether this object alone announces updates found by scheduled checks, without the updater's window.
    [[nodiscard]] bool supportsGentleScheduledUpdateReminders() const { return true; }

    /// Takes effect in a later turn of the main thread's event loop. Thread-safe.
    void standardUserDriverWillHandleShowingUpdate(bool /*handleShowingUpdate*/, const AppcastItem &update,
                                                   ShowingUpdateState state) {
        const auto announce = [this, version = update.displayVersionString, state] {
            if (state.userInitiated)
                m_activateApplication();
            else
                m_sendUpdateAvailable(version);
        };
        QMetaObject::invokeMethod(this, announce, Qt::QueuedConnection);
    }

private:
    std::function<void()> m_activateApplication;
    std::function<void(const QString &)> m_sendUpdateAvailable;
};

} // namespace burnwick
