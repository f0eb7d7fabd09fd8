// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/OAuthCredentials.h"

#include <QObject>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace burnwick {

class KeychainManager;
class RepeatingTimer;
class Scheduler;
class TerminalLauncher;

/// One login of Claude Code: opens a terminal on the login command, then looks every two seconds whether a
/// new access token has been stored. How the command ends does not matter. Main thread only.
class LoginFlow final : public QObject {
    Q_OBJECT

public:
    enum class Outcome {
        loggedIn,    ///< the stored access token is another one than before
        timedOut,    ///< none came within 90 looks, about three minutes
        notLaunched, ///< no terminal could be started
    };

    static constexpr std::chrono::seconds pollInterval{2};
    static constexpr int maxPolls = 90;

    /// What is referred to must outlive this object.
    LoginFlow(KeychainManager &keychain, TerminalLauncher &terminal, Scheduler &scheduler);
    ~LoginFlow() override;

    /// Starts the login. Calls `done` once, unless this object is destroyed before; `done` may destroy it.
    void start(std::function<void(Outcome)> done);

private:
    using Credentials = std::optional<OAuthCredentials>;

    void readCredentials(void (LoginFlow::*take)(const Credentials &));
    void launch(const Credentials &before);
    void poll();
    void compare(const Credentials &now);
    void finish(Outcome outcome);

    KeychainManager &m_keychain;
    TerminalLauncher &m_terminal;
    Scheduler &m_scheduler;
    std::function<void(Outcome)> m_done;
    std::optional<std::string> m_oldToken;
    std::unique_ptr<RepeatingTimer> m_timer;
    int m_polls = 0;
    bool m_reading = false;
};

} // namespace burnwick
