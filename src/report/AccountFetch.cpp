// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/AccountFetch.h"

#include "platform/Platform.h"
#include "prefs/UserDefaults.h"
#include "report/SignalHold.h"
#include "state/AccountServices.h"
#include "state/FailureVerdict.h"

#include <QCoreApplication>
#include <QCoroTask>

namespace burnwick {

namespace {

/// As a refresh that the user asked for.
QCoro::Task<OAuthStatus> statusAfterFailure(KeychainManager &keychain,
                                            std::optional<FetchError::Kind> error) {
    const FailureVerdict verdict = verdictOn(error, RefreshKind::forced);
    bool hasCredentials = false;
    if (verdict == FailureVerdict::dependsOnCredentials) {
        const auto credentials = co_await keychain.readCredentials();
        hasCredentials = credentials.has_value();
    }
    co_return statusAfter(verdict, hasCredentials);
}

QCoro::Task<AccountAnswer> askForQuota(AccountServices &services) {
    AccountAnswer answer;
    std::optional<FetchError::Kind> error;
    try {
        const OAuthFetcher::Usage usage = co_await services.oauthFetcher.fetchUsage();
        answer.quota = usage.first;
        answer.figures.extraUsage = usage.second;
        answer.figures.oauthStatus = OAuthStatus::connected;
    } catch (const FetchError &failure) {
        error = failure.kind();
        answer.failure = failure.what();
    } catch (const std::exception &failure) {
        answer.failure = failure.what();
    }
    if (!answer.quota)
        answer.figures.oauthStatus = co_await statusAfterFailure(services.keychain, error);
    co_return answer;
}

QCoro::Task<std::optional<std::vector<ClaudeComponentStatus>>> askForStatus(AccountServices &services) {
    std::optional<std::vector<ClaudeComponentStatus>> statuses;
    try {
        statuses = co_await services.statusFetcher.fetchStatuses();
    } catch (const std::exception &) {
        // Not known is all that the report says of it.
    }
    co_return statuses;
}

QCoro::Task<AccountAnswer> askForBoth(AccountServices &services) {
    // Both are under way before the first of them is waited for.
    auto status = askForStatus(services);
    AccountAnswer answer = co_await askForQuota(services);
    answer.figures.claudeStatus = co_await status;
    co_return answer;
}

} // namespace

AccountAnswer fetchAccount(const std::filesystem::path &home, const Clock &clock, const Calendar &calendar) {
    int argumentCount = 1;
    char name[] = "burnwick-report";
    char *arguments[] = {name, nullptr};
    const QCoreApplication application(argumentCount, arguments);
    const auto store = platform::makeSecretStore(home);
    const UserDefaults defaults(UserDefaults::defaultPath(), UserDefaults::Access::readOnly);
    // Tokens that the server has issued and nobody has stored would cost the user a login.
    std::optional<SignalHold> hold;
    AccountServices services(Endpoints::load(defaults), *store, clock, calendar);
    QObject::connect(&services.oauthFetcher, &OAuthFetcher::exchangeBegan, [&hold] { hold.emplace(); });
    QObject::connect(&services.oauthFetcher, &OAuthFetcher::exchangeEnded, [&hold] { hold.reset(); });
    return QCoro::waitFor(askForBoth(services));
}

} // namespace burnwick
