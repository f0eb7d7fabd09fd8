// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include <functional>

namespace burnwick {

struct AppcastItem;

/// How the update that is about to be shown was found.
struct ShowingUpdateState {
    bool userInitiated = false; ///< the user had asked
};

/// Makes an update known to the user when an updater is about to show it: brings the program to the front if
/// the user asked for the check, and sends a notification otherwise. Create it on the main thread.
class UserDriverDelegate final : public QObject {
public:
    /// Both are called on the main thread: `activateApplication` brings the program in front of all others.
    UserDriverDelegate(std::function<void()> activateApplication,
                       std::function<void(const QString &displayVersion)> sendUpdateAvailable);

    /// Whether an update that a scheduled check found need not be put before the user by the updater itself.
    /// From any thread.
    [[nodiscard]] bool supportsGentleScheduledUpdateReminders() const { return true; }

    /// From any thread; takes effect in a later turn of the main thread's event loop.
    void standardUserDriverWillHandleShowingUpdate(bool handleShowingUpdate, const AppcastItem &update,
                                                   ShowingUpdateState state);

private:
    std::function<void()> m_activateApplication;
    std::function<void(const QString &)> m_sendUpdateAvailable;
};

} // namespace burnwick
