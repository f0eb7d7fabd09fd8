// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ledger/Ledger.h"
#include "platform/Platform.h"
#include "platform/linux/defaults/JsonUserDefaults.h"
#include "prefs/PreferencesManager.h"
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

inline constexpr const char *usagePath = "/api/oauth/usage";
inline constexpr const char *tokenPath = "/api/oauth/token";
inline constexpr const char *statusPath = "/api/v2/components.json";

/// Returns the usage endpoint's answer; `extra` is the JSON of the extra usage.
[[nodiscard]] ScriptedAnswer usageAnswer(double fiveHourPct, const std::string &extra = "null");

/// A terminal that answers on request.
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

/// An application state on a temporary home, with a manual clock, manual timers and a scripted server for the
/// vendor's services. Starts nothing.
class StateFixture : public testing::Test {
protected:
    StateFixture();

    [[nodiscard]] AppState::Services services() { return services(m_home.path()); }
    /// With the logs of another home.
    [[nodiscard]] AppState::Services services(const std::filesystem::path &home);
    [[nodiscard]] const UsageFigures &usage() const { return m_state.snapshot().usage; }
    [[nodiscard]] const AccountFigures &account() const { return m_state.snapshot().account; }
    /// Waits until the history has that many messages.
    bool historyHas(std::int64_t messages) {
        return waitFor([&] { return usage().historicalData.messageCount == messages; });
    }
    /// Waits until the session has that many input tokens.
    bool sessionHas(std::int64_t input) {
        return waitFor([&] { return usage().sessionTokens.input == input; });
    }
    void fireLocalTimer() { m_scheduler.fire(std::chrono::seconds(60)); }
    void fireQuotaTimer() { m_scheduler.fire(std::chrono::seconds(300)); }

    ManualClock m_clock{"2025-06-10T12:00:00.000Z"};
    LogHome m_home;
    Calendar m_calendar = Calendar::inZone("UTC");
    JsonUserDefaults m_defaults{QString::fromStdString((m_home.path() / "settings.json").string())};
    PreferencesManager m_preferences{m_defaults};
    ManualScheduler m_scheduler;
    ScriptedServer m_server;
    MemorySecretStore m_store;
    AccountServices m_account;
    FakeTerminal m_terminal;
    Ledger m_ledger{m_home.path() / "data"};
    int m_loginPagesOpened = 0;
    double m_jitter = 0; ///< of pauses after a refusal
    AppState m_state;

private:
    [[nodiscard]] Endpoints endpoints() const;
};

} // namespace burnwick::test
