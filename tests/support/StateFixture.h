// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "notify/QuotaAlerts.h"
#include "platform/Platform.h"
#include "prefs/PreferencesManager.h"
#include "prefs/UserDefaults.h"
#include "state/AccountServices.h"
#include "state/AppState.h"
#include "support/LogTreeFixture.h"
#include "support/ManualClock.h"
#include "support/ManualScheduler.h"
#include "support/MemorySecretStore.h"
#include "support/ScriptedServer.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace burnwick::test {

/// Writes down what it is told.
class RecordingAlerts final : public QuotaAlerts {
public:
    void checkQuota(std::optional<Instant> resetAt, bool alertAt80Enabled, bool rateLimitEnabled,
                    double usagePct) override {
        checks.push_back({resetAt, alertAt80Enabled, rateLimitEnabled, usagePct});
    }
    void sendSessionReset() override { ++resets; }

    struct Check {
        std::optional<Instant> resetAt;
        bool alertAt80Enabled, rateLimitEnabled;
        double usagePct;
    };
    std::vector<Check> checks;
    int resets = 0;
};

/// A terminal that answers when told to.
class FakeTerminal final : public TerminalLauncher {
public:
    void runInLoginShell(const std::string &command, std::function<void(bool launched)> answer) override {
        commands.push_back(command);
        m_answer = std::move(answer);
    }
    void answer(bool launched) const { m_answer(launched); }

    std::vector<std::string> commands;

private:
    std::function<void(bool)> m_answer;
};

/// A state on a home of its own, with a clock and timers moved by hand and a stand-in for the vendor's
/// services. Nothing is started.
class StateFixture : public testing::Test {
protected:
    StateFixture();

    [[nodiscard]] AppState::Services services();
    /// Once the history is in that has so many messages.
    bool historyHas(std::int64_t messages) {
        return waitFor([&] { return m_state.historicalData().messageCount == messages; });
    }
    void fireLocalTimer() { m_scheduler.fire(std::chrono::seconds(60)); }
    void fireQuotaTimer() { m_scheduler.fire(std::chrono::seconds(300)); }

    ManualClock m_clock{"2025-06-10T12:00:00.000Z"};
    LogHome m_home;
    Calendar m_calendar = Calendar::inZone("UTC");
    UserDefaults m_defaults{QString::fromStdString((m_home.path() / "settings.json").string())};
    PreferencesManager m_preferences{m_defaults};
    ManualScheduler m_scheduler;
    ScriptedServer m_server;
    MemorySecretStore m_store;
    AccountServices m_account;
    FakeTerminal m_terminal;
    RecordingAlerts m_alerts;
    int m_loginPagesOpened = 0;
    AppState m_state;

private:
    [[nodiscard]] Endpoints endpoints() const;
};

} // namespace burnwick::test
