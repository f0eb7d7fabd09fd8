// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "update/DailyCheck.h"

#include <QCoroTask>
#include <QObject>
#include <QUrl>

#include <memory>

namespace burnwick {

class HttpClient;
class RepeatingTimer;
class Scheduler;
struct AppcastVerdict;
class UpdateChecker;
class UserDriverDelegate;

/// Checks the appcast once a day, starting at construction, and calls its delegates with the result. Never
/// checks a placeholder site. Main thread only.
class StandardUpdaterController final : public QObject {
public:
    /// The referenced objects must outlive the controller.
    struct Services {
        HttpClient &http;
        UserDefaults &defaults;
        const Clock &clock;
        Scheduler &scheduler;
        QUrl productBaseURL;
        UpdateChecker &updaterDelegate;
        UserDriverDelegate &userDriverDelegate;
    };

    /// Sends no request before the event loop runs.
    explicit StandardUpdaterController(Services services);
    /// Ends a running check without calling the delegates.
    ~StandardUpdaterController() override;

private:
    void checkIfDue();
    [[nodiscard]] QCoro::Task<void> check();
    void report(const AppcastVerdict &verdict) const;

    Services m_services;
    DailyCheck m_dailyCheck;
    bool m_isChecking = false;
    std::unique_ptr<RepeatingTimer> m_timer;
};

} // namespace burnwick
