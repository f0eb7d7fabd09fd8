// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/AccountFetch.h"

#include "async/Scheduler.h"
#include "platform/Platform.h"
#include "platform/TerminalLauncher.h"
#include "platform/UserDefaults.h"
#include "prefs/PreferencesManager.h"
#include "report/SignalHold.h"
#include "state/AccountTracker.h"

#include <QCoreApplication>
#include <QCoroTask>

namespace burnwick {

namespace {

/// The report starts no login.
class NoTerminal final : public TerminalLauncher {
public:
    void runInLoginShell(const std::string &, std::function<void(bool)> answer) override { answer(false); }
};

QCoro::Task<void> fetchBoth(AccountTracker &tracker) {
    // Both requests start before the first of them is awaited.
    const auto status = tracker.refreshClaudeStatus();
    co_await tracker.forceRefreshQuota();
    co_await status;
}

} // namespace

AccountFigures fetchAccount(ConfigurationFolders configurationFolders, UserDefaults &defaults,
                            const Clock &clock, const Calendar &calendar) {
    int argumentCount = 1;
    char name[] = "burnwick-report";
    char *arguments[] = {name, nullptr};
    const QCoreApplication application(argumentCount, arguments);
    const auto store = platform::makeSecretStore(std::move(configurationFolders));
    const PreferencesManager preferences(defaults);
    EventLoopScheduler scheduler(clock);
    NoTerminal terminal;
    // The server accepts a refresh token once: an end before the new one is stored would lose the login.
    std::optional<SignalHold> hold;
    AccountServices services(Endpoints::load(defaults), *store, clock, calendar);
    QObject::connect(&services.oauthFetcher, &OAuthFetcher::exchangeBegan, [&hold] { hold.emplace(); });
    QObject::connect(&services.oauthFetcher, &OAuthFetcher::exchangeEnded, [&hold] { hold.reset(); });
    AccountTracker tracker({preferences, clock, scheduler, services, terminal, [] {}});
    QCoro::waitFor(fetchBoth(tracker));
    return tracker.figures();
}

} // namespace burnwick
