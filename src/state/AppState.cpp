// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "state/AppState.h"

#include "prefs/PreferencesManager.h"

#include <utility>

namespace burnwick {

AppState::AppState(Services services, QObject *parent)
    : QObject(parent)
    , m_usage(std::move(services.usage))
    , m_account(std::move(services.account))
    , m_snapshot{m_usage.figures(), m_account.figures()} {
    connect(&m_usage, &UsageTracker::refreshed, this, [this] {
        const bool isOtherZone = m_usage.figures().calendar != m_snapshot.usage.calendar;
        take(m_snapshot.usage, m_usage.figures());
        if (isOtherZone)
            m_account.setCalendar(m_snapshot.usage.calendar);
    });
    connect(&m_account, &AccountTracker::refreshed, this, [this] {
        take(m_snapshot.account, m_account.figures());
        m_usage.setLimits(m_snapshot.account.limits);
    });
    connect(&services.usage.preferences, &PreferencesManager::refreshRateChanged, this, [this] {
        m_account.restartTimer();
        m_usage.restartTimer();
    });
    connect(&services.usage.preferences, &PreferencesManager::figuresChanged, this,
            [this] { m_usage.followFigureChoice(); });
}

template <typename Figures>
void AppState::take(Figures &part, const Figures &figures) {
    if (part != figures) {
        Q_EMIT objectWillChange();
        part = figures;
    }
    Q_EMIT refreshed();
}

void AppState::start() {
    m_usage.start();
    m_account.start();
}

void AppState::stop() {
    m_usage.stop();
    m_account.stop();
}

void AppState::wakeUp() {
    m_account.wakeUp();
    m_usage.followTimeZone();
}

} // namespace burnwick
