// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "update/DailyCheck.h"
#include "update/UserDriverDelegate.h"

#include <QByteArray>
#include <QCoroTask>
#include <QObject>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>
#include <thread>

namespace burnwick {

class HttpClient;
class RepeatingTimer;
class Scheduler;
class UpdaterDelegate;

/// Looks for a newer release once a day, from its construction on, and whenever the user asks for it. It
/// reads the whole appcast and tells its delegates, on a thread of its own; installing is left to the user. A
/// site that is only a placeholder is never asked by itself. Main thread only.
class StandardUpdaterController final : public QObject {
public:
    /// What the controller works with; what is referred to must outlive it.
    struct Services {
        HttpClient &http;
        UserDefaults &defaults;
        const Clock &clock;
        Scheduler &scheduler;
        QUrl productBaseURL;
        UpdaterDelegate &updaterDelegate;
        UserDriverDelegate &userDriverDelegate;
        /// The updater's own window for an update that the user asked for; on the main thread.
        std::function<void(const QString &displayVersion)> showUpdate;
    };

    /// Starts. No request is made before the event loop runs.
    explicit StandardUpdaterController(Services services);
    /// Waits for calls to the delegates that are under way; makes no more.
    ~StandardUpdaterController() override;

    /// Checks at once, because the user asks for it. A check that is under way becomes the user's.
    void checkForUpdates();

private:
    void checkIfDue();
    void begin();
    QCoro::Task<void> check();
    void conclude(const QByteArray &document, bool userInitiated);
    void onOwnThread(std::function<void()> work);

    Services m_services;
    DailyCheck m_dailyCheck;
    bool m_fetching = false;
    bool m_userInitiated = false; ///< the check under way
    std::unique_ptr<RepeatingTimer> m_timer;
    std::jthread m_thread; ///< joined before anything above goes
};

} // namespace burnwick
