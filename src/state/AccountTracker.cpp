// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "state/AccountTracker.h"

#include "async/DetachedTask.h"
#include "async/Scheduler.h"
#include "model/Clock.h"
#include "net/TransportError.h"
#include "prefs/PreferencesManager.h"
#include "state/LimitFigures.h"

#include <QPointer>

#include <exception>
#include <utility>

namespace burnwick {

namespace {

constexpr std::chrono::seconds quotaInterval{300};
constexpr std::chrono::seconds longestFreshness = 2 * quotaInterval;
constexpr std::chrono::seconds retryInterval{3};
/// By then a network that comes back after a sleep is back.
constexpr std::chrono::minutes retriesAfterWaking{1};

} // namespace

AccountTracker::AccountTracker(Services services)
    : m_services(std::move(services)) {}

AccountTracker::~AccountTracker() = default;

void AccountTracker::start() {
    startOAuthTimer();
    runDetached(refreshQuota());
    runDetached(refreshClaudeStatus());
}

void AccountTracker::stop() {
    m_stopped = true;
    m_oauthTimer.reset();
    m_retryTimer.reset();
    m_resumeTimer.reset();
    m_staleTimer.reset();
    m_login.reset();
}

void AccountTracker::startOAuthTimer() {
    m_oauthTimer = m_services.scheduler.repeat(quotaInterval, [this] { runDetached(refreshQuota()); });
}

void AccountTracker::restartTimer() {
    if (m_oauthTimer)
        startOAuthTimer();
}

void AccountTracker::setCalendar(const Calendar &calendar) {
    m_services.account.oauthFetcher.setCalendar(calendar);
    runDetached(refreshQuota());
}

void AccountTracker::wakeUp() {
    m_retryUntil = m_services.clock.now() + retriesAfterWaking;
}

void AccountTracker::setStatus(OAuthStatus status) {
    m_figures.oauthStatus = status;
    Q_EMIT refreshed();
}

QCoro::Task<void> AccountTracker::refreshQuota() {
    requestFirstStatus();
    const Instant now = m_services.clock.now();
    if (m_services.preferences.autoRefreshQuota() && m_figures.oauthStatus != OAuthStatus::authenticating &&
        !m_resumeTimer && m_pacing.earliest(RequestPacing::Asker::timer, now) <= now)
        co_await fetchQuota(RefreshKind::automatic);
}

QCoro::Task<void> AccountTracker::refreshQuotaNow() {
    if (!m_services.preferences.autoRefreshQuota()) {
        co_await forceRefreshQuota();
    } else {
        requestFirstStatus();
        if (m_figures.oauthStatus != OAuthStatus::authenticating && !isPostponed())
            co_await fetchQuota(RefreshKind::automatic);
    }
}

QCoro::Task<void> AccountTracker::forceRefreshQuota() {
    requestFirstStatus();
    if (isPostponed())
        co_return;
    setStatus(OAuthStatus::unknown);
    co_await fetchQuota(RefreshKind::forced);
}

QCoro::Task<void> AccountTracker::fetchQuota(RefreshKind kind) {
    const QPointer<AccountTracker> self(this);
    if (!m_firstQuotaSettled && !m_figures.awaitsFirstQuota)
        runDetached(awaitFirstQuota());
    m_pacing.noteRequest(m_services.clock.now());
    std::optional<OAuthFetcher::Usage> usage;
    std::optional<FetchError> error;
    std::string reason;
    bool unanswered = false;
    try {
        usage = co_await m_services.account.oauthFetcher.fetchUsage();
    } catch (const FetchError &failure) {
        error = failure;
        reason = failure.what();
        unanswered = failure.isUnanswered();
    } catch (const std::exception &failure) {
        // Of the network, or a malformed answer.
        reason = failure.what();
        unanswered = dynamic_cast<const TransportError *>(&failure) != nullptr;
        if (self)
            m_quotaOutage.note(failure);
    }
    if (!self || m_stopped)
        co_return;
    m_figures.quotaFailure = reason;
    m_figures.asksAgainAt.reset();
    if (usage)
        takeQuota(*usage);
    else if (unanswered)
        repeatSoon();
    if (error && error->isTooManyRequests())
        pause(*error);
    if (!usage)
        co_await takeFailure(error ? std::optional(error->kind()) : std::nullopt, kind);
    if (!self || m_stopped)
        co_return;
    m_firstQuotaSettled = true;
    m_figures.awaitsFirstQuota = false;
    Q_EMIT refreshed();
}

/// Without a login there is no request to await.
QCoro::Task<void> AccountTracker::awaitFirstQuota() {
    const QPointer<AccountTracker> self(this);
    const auto credentials = co_await m_services.account.keychain.readCredentials();
    if (!self || !credentials || m_firstQuotaSettled)
        co_return;
    m_figures.awaitsFirstQuota = true;
    Q_EMIT refreshed();
}

void AccountTracker::takeQuota(const OAuthFetcher::Usage &usage) {
    m_quotaOutage.end();
    m_retryUntil = {};
    m_retryTimer.reset();
    m_resumeTimer.reset();
    m_pacing.forgetRefusals();
    takeAnswer(m_figures, usage, m_services.clock.now());
    followAgeOfQuota();
    // A login started after this request keeps its state.
    if (m_figures.oauthStatus != OAuthStatus::authenticating)
        m_figures.oauthStatus = OAuthStatus::connected;
}

void AccountTracker::observe(std::vector<Limit> limits) {
    if (m_stopped)
        return;
    if (takeObservations(m_figures, std::move(limits), m_services.clock.now())) {
        m_pacing.noteObservation(*m_figures.quotaReadAt);
        m_figures.asksAgainAt.reset();
        followAgeOfQuota();
    }
    Q_EMIT refreshed();
}

void AccountTracker::followAgeOfQuota() {
    const auto left = *m_figures.quotaReadAt + longestFreshness - m_services.clock.now();
    m_figures.isQuotaStale = left <= left.zero();
    m_staleTimer.reset();
    if (!m_figures.isQuotaStale)
        startOnce(m_staleTimer, m_services.scheduler, left, [this] {
            m_figures.isQuotaStale = true;
            Q_EMIT refreshed();
        });
}

/// Without the quota timer there are no automatic requests.
void AccountTracker::pause(const FetchError &refusal) {
    const Instant now = m_services.clock.now();
    m_pacing.noteRefusal(now, refusal.retryAfter(), m_services.jitter());
    if (m_oauthTimer)
        resumeAt(m_pacing.earliest(RequestPacing::Asker::timer, now));
}

/// Whether it is too early for the user's request. If so, announces when the next request follows.
bool AccountTracker::isPostponed() {
    const Instant now = m_services.clock.now();
    Instant next = m_pacing.earliest(RequestPacing::Asker::user, now);
    if (next <= now)
        return false;
    if (m_oauthTimer && m_services.preferences.autoRefreshQuota())
        next = m_pacing.earliest(RequestPacing::Asker::timer, now);
    m_figures.asksAgainAt = next;
    resumeAt(next);
    Q_EMIT refreshed();
    return true;
}

void AccountTracker::resumeAt(Instant instant) {
    startOnce(m_resumeTimer, m_services.scheduler, instant - m_services.clock.now(), [this] {
        restartTimer(); // not two requests within one interval
        const bool isUsers = std::exchange(m_figures.asksAgainAt, std::nullopt).has_value();
        runDetached(isUsers ? refreshQuotaNow() : refreshQuota());
    });
}

void AccountTracker::repeatSoon() {
    const auto left = m_retryUntil - m_services.clock.now();
    // More is left only when the clock was set back.
    if (left <= left.zero() || left > retriesAfterWaking || m_retryTimer)
        return;
    startOnce(m_retryTimer, m_services.scheduler, retryInterval, [this] { runDetached(refreshQuota()); });
}

/// Sets the state of the link after a failure; `error` is absent for one that is no FetchError. Where the
/// failure alone does not decide, the account is expired with credentials and disconnected without; but an
/// automatic refresh leaves a state that is known.
QCoro::Task<void> AccountTracker::takeFailure(std::optional<FetchError::Kind> error, RefreshKind kind) {
    using Kind = FetchError::Kind;
    const bool isAutomatic = kind == RefreshKind::automatic;
    const QPointer<AccountTracker> self(this);
    const auto isKnown = [this, isAutomatic] {
        return m_figures.oauthStatus == OAuthStatus::authenticating ||
               (isAutomatic && m_figures.oauthStatus != OAuthStatus::unknown);
    };
    if (m_figures.oauthStatus == OAuthStatus::authenticating)
        co_return;
    if (error == Kind::noToken) {
        m_figures.oauthStatus = OAuthStatus::disconnected;
    } else if (error == Kind::noRefreshToken || error == Kind::refreshFailed || error == Kind::unauthorized ||
               (error == Kind::refreshTokenExpired && isAutomatic)) {
        m_figures.oauthStatus = OAuthStatus::expired;
    } else if (!isKnown()) {
        const auto credentials = co_await m_services.account.keychain.readCredentials();
        if (self && !isKnown())
            m_figures.oauthStatus = credentials ? OAuthStatus::expired : OAuthStatus::disconnected;
    }
}

/// The status page needs no login.
void AccountTracker::requestFirstStatus() {
    if (!m_figures.claudeStatusReadAt && !m_stopped)
        runDetached(refreshClaudeStatus());
}

QCoro::Task<void> AccountTracker::refreshClaudeStatus() {
    const QPointer<AccountTracker> self(this);
    if (std::exchange(m_statusUnderWay, true))
        co_return;
    std::optional<std::vector<ClaudeComponentStatus>> statuses;
    try {
        statuses = co_await m_services.account.statusFetcher.fetchStatuses();
    } catch (const std::exception &failure) {
        if (self)
            m_statusOutage.note(failure);
    }
    if (!self)
        co_return;
    m_statusUnderWay = false;
    if (!statuses)
        co_return;
    m_statusOutage.end();
    m_figures.claudeStatus = std::move(*statuses);
    m_figures.claudeStatusReadAt = m_services.clock.now();
    Q_EMIT refreshed();
}

void AccountTracker::connect() {
    if (m_figures.oauthStatus == OAuthStatus::authenticating)
        return;
    setStatus(OAuthStatus::authenticating);
    m_login =
        std::make_unique<LoginFlow>(m_services.account.keychain, m_services.terminal, m_services.scheduler);
    m_login->start([this](LoginFlow::Outcome outcome) { endLogin(outcome); });
}

void AccountTracker::endLogin(LoginFlow::Outcome outcome) {
    m_login.reset();
    if (outcome == LoginFlow::Outcome::loggedIn) {
        m_pacing.forgetRefusals();
        m_resumeTimer.reset();
        runDetached(forceRefreshQuota());
        return;
    }
    if (outcome == LoginFlow::Outcome::notLaunched)
        m_services.openLoginPage();
    setStatus(OAuthStatus::expired);
}

} // namespace burnwick
