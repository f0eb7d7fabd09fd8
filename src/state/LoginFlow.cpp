// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "state/LoginFlow.h"

#include "async/Scheduler.h"
#include "platform/TerminalLauncher.h"
#include "quota/KeychainManager.h"
#include "state/LoginCommand.h"

#include <QPointer>

#include <utility>

namespace burnwick {

LoginFlow::LoginFlow(KeychainManager &keychain, TerminalLauncher &terminal, Scheduler &scheduler)
    : m_keychain(keychain)
    , m_terminal(terminal)
    , m_scheduler(scheduler) {}

LoginFlow::~LoginFlow() = default;

void LoginFlow::start(std::function<void(Outcome)> done) {
    m_done = std::move(done);
    readCredentials(&LoginFlow::launch);
}

void LoginFlow::readCredentials(void (LoginFlow::*take)(const Credentials &)) {
    m_reading = true;
    m_keychain.readCredentials().then([self = QPointer(this), take](const Credentials &credentials) {
        if (!self)
            return;
        self->m_reading = false;
        (self->*take)(credentials);
    });
}

void LoginFlow::launch(const Credentials &before) {
    if (before)
        m_oldToken = before->accessToken;
    m_terminal.runInLoginShell(loginCommand, [self = QPointer(this)](bool launched) {
        if (!self)
            return;
        if (launched)
            self->m_timer = self->m_scheduler.repeat(pollInterval, [flow = self.data()] { flow->poll(); });
        else
            self->finish(Outcome::notLaunched);
    });
}

void LoginFlow::poll() {
    // A slow store is not asked again before it has answered.
    if (m_reading)
        return;
    ++m_polls;
    readCredentials(&LoginFlow::compare);
}

void LoginFlow::compare(const Credentials &now) {
    if (now && now->accessToken != m_oldToken)
        finish(Outcome::loggedIn);
    else if (m_polls == maxPolls)
        finish(Outcome::timedOut);
}

void LoginFlow::finish(Outcome outcome) {
    m_timer.reset();
    // A copy: the one who hears of it may destroy this object.
    const auto done = std::exchange(m_done, nullptr);
    done(outcome);
}

} // namespace burnwick
