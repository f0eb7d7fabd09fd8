// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT

// The account's half of the state: quota, service status and login.

#include "async/DetachedTask.h"
#include "async/Scheduler.h"
#include "model/QuotaWindow.h"
#include "net/TransportError.h"
#include "notify/QuotaAlerts.h"
#include "prefs/PreferencesManager.h"
#include "quota/FetchError.h"
#include "quota/KeychainManager.h"
#include "state/AppState.h"
#include "status/ClaudeStatusFetcher.h"

#include <QPointer>

#include <utility>

namespace burnwick {

namespace {

constexpr std::chrono::seconds retryInterval{3};
/// By then a network that comes back after a sleep is back.
constexpr std::chrono::minutes retriesAfterWaking{1};

} // namespace

QCoro::Task<void> AppState::refreshQuota() {
    askForFirstStatus();
    if (!m_services.preferences.autoRefreshQuota() || m_oauthStatus == OAuthStatus::authenticating)
        co_return;
    co_await fetchQuota(RefreshKind::automatic);
}

QCoro::Task<void> AppState::forceRefreshQuota() {
    askForFirstStatus();
    publish(m_oauthStatus, OAuthStatus::unknown);
    co_await fetchQuota(RefreshKind::forced);
}

QCoro::Task<void> AppState::fetchQuota(RefreshKind kind) {
    const QPointer<AppState> self(this);
    if (m_firstQuota == FirstQuota::unknown)
        runDetached(awaitFirstQuota());
    std::optional<OAuthFetcher::Usage> usage;
    std::optional<FetchError::Kind> error;
    bool unanswered = false;
    try {
        usage = co_await m_services.oauthFetcher.fetchUsage();
    } catch (const FetchError &failure) {
        error = failure.kind();
        unanswered = failure.isUnanswered();
    } catch (const std::exception &failure) {
        // Of the network, or an answer that cannot be read: the user learns of it by the verdict.
        if (self)
            m_quotaOutage.failed(failure);
        unanswered = dynamic_cast<const TransportError *>(&failure) != nullptr;
    }
    if (!self || m_stopped)
        co_return;
    if (usage)
        takeQuota(*usage);
    else if (unanswered)
        repeatSoon();
    if (!usage)
        co_await takeFailure(verdictOn(error, kind), kind);
    if (self)
        publish(m_firstQuota, FirstQuota::settled);
}

/// Without a login nothing is awaited.
QCoro::Task<void> AppState::awaitFirstQuota() {
    const QPointer<AppState> self(this);
    const auto credentials = co_await m_services.keychain.readCredentials();
    if (self && credentials && m_firstQuota == FirstQuota::unknown)
        publish(m_firstQuota, FirstQuota::awaited);
}

void AppState::takeQuota(const OAuthFetcher::Usage &usage) {
    const auto &[quota, extraUsage] = usage;
    m_quotaOutage.reached();
    m_retryUntil = {};
    m_retryTimer.reset();
    publish(m_quotaData, std::optional(quota));
    if (extraUsage)
        publish(m_extraUsage, extraUsage);
    // A login that began meanwhile is not over because an older request succeeded.
    if (m_oauthStatus != OAuthStatus::authenticating)
        publish(m_oauthStatus, OAuthStatus::connected);
    updateStatusIndicator();
}

void AppState::wakeUp() {
    if (m_stopped)
        return;
    m_retryUntil = m_services.clock.now() + retriesAfterWaking;
    followTimeZone();
}

void AppState::repeatSoon() {
    const auto left = m_retryUntil - m_services.clock.now();
    // More is left only when the clock was set back.
    if (left <= left.zero() || left > retriesAfterWaking || m_retryTimer)
        return;
    m_retryTimer = m_services.scheduler.repeat(retryInterval, [this] {
        m_retryTimer.reset();
        runDetached(refreshQuota());
    });
}

/// What was known of the quota stays.
QCoro::Task<void> AppState::takeFailure(FailureVerdict verdict, RefreshKind kind) {
    const auto known = [this, kind] {
        return m_oauthStatus == OAuthStatus::authenticating ||
               (kind == RefreshKind::automatic && m_oauthStatus != OAuthStatus::unknown);
    };
    if (m_oauthStatus == OAuthStatus::authenticating)
        co_return;
    bool hasCredentials = false;
    if (verdict == FailureVerdict::dependsOnCredentials) {
        if (known())
            co_return;
        const QPointer<AppState> self(this);
        const auto credentials = co_await m_services.keychain.readCredentials();
        if (!self || known())
            co_return;
        hasCredentials = credentials.has_value();
    }
    publish(m_oauthStatus, statusAfter(verdict, hasCredentials));
}

/// The status page needs no login.
void AppState::askForFirstStatus() {
    if (!m_statusAnswered && !m_stopped)
        runDetached(refreshClaudeStatus());
}

QCoro::Task<void> AppState::refreshClaudeStatus() {
    const QPointer<AppState> self(this);
    if (std::exchange(m_statusUnderWay, true))
        co_return;
    std::optional<std::vector<ClaudeComponentStatus>> statuses;
    try {
        statuses = co_await m_services.statusFetcher.fetchStatuses();
    } catch (const std::exception &failure) {
        // The status panel keeps what it shows.
        if (self)
            m_statusOutage.failed(failure);
    }
    if (!self)
        co_return;
    m_statusUnderWay = false;
    if (!statuses)
        co_return;
    m_statusAnswered = true;
    m_statusOutage.reached();
    publish(m_claudeStatus, std::move(*statuses));
}

void AppState::updateStatusIndicator() {
    publish(m_statusIndicator, statusIndicatorFor(m_quotaData));
    if (!m_quotaData)
        return;
    const PreferencesManager &preferences = m_services.preferences;
    m_services.alerts.checkQuota(m_quotaData->fiveHourResetAt, preferences.alertAt80Quota(),
                                 preferences.rateLimitAlerts(), m_quotaData->fiveHourUsagePct);
    const auto &resetAt = m_quotaData->fiveHourResetAt;
    if (!resetAt || (m_lastKnownResetAt && isSameQuotaWindow(*resetAt, *m_lastKnownResetAt)))
        return;
    const bool isFirst = !m_lastKnownResetAt;
    m_lastKnownResetAt = resetAt;
    if (!isFirst && preferences.sessionResetAlerts())
        m_services.alerts.sendSessionReset();
}

void AppState::connect() {
    if (m_oauthStatus == OAuthStatus::authenticating)
        return;
    publish(m_oauthStatus, OAuthStatus::authenticating);
    m_login = std::make_unique<LoginFlow>(m_services.keychain, m_services.terminal, m_services.scheduler);
    m_login->start([this](LoginFlow::Outcome outcome) { endLogin(outcome); });
}

void AppState::endLogin(LoginFlow::Outcome outcome) {
    m_login.reset();
    if (outcome == LoginFlow::Outcome::loggedIn) {
        runDetached(forceRefreshQuota());
        return;
    }
    if (outcome == LoginFlow::Outcome::notLaunched)
        m_services.openLoginPage();
    publish(m_oauthStatus, OAuthStatus::expired);
}

} // namespace burnwick
