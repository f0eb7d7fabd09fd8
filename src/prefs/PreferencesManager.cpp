// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "prefs/PreferencesManager.h"

#include "prefs/Settings.h"

namespace burnwick {

PreferencesManager::PreferencesManager(UserDefaults &defaults, QObject *parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_theme(load(defaults, settings::theme))
    , m_refreshRate(load(defaults, settings::refreshRate))
    , m_launchAtStartup(load(defaults, settings::launchAtStartup))
    , m_autoRefreshQuota(load(defaults, settings::autoRefreshQuota))
    , m_alertAt80Quota(load(defaults, settings::alertAt80Quota))
    , m_rateLimitAlerts(load(defaults, settings::rateLimitAlerts))
    , m_sessionResetAlerts(load(defaults, settings::sessionResetAlerts))
    , m_paceAlerts(load(defaults, settings::paceAlerts))
    , m_keepHistory(load(defaults, settings::keepHistory))
    , m_keepHistoryAsked(load(defaults, settings::keepHistoryAsked))
    , m_barExtensionAsked(load(defaults, settings::barExtensionAsked))
    , m_logFolders(load(defaults, settings::logFolders))
    , m_figures(load(defaults, settings::figures))
    , m_monthlySpendLimit(load(defaults, settings::monthlySpendLimit)) {}

template <typename Value>
void PreferencesManager::publish(Value &current, Value value, ChangeSignal<Value> changed) {
    if (current == value)
        return;
    current = value;
    Q_EMIT(this->*changed)(value);
}

template <typename Value>
void PreferencesManager::assign(const Setting<Value> &setting, Value &current, Value value,
                                ChangeSignal<Value> changed) {
    publish(current, value, changed);
    // Not `value`: an observer may have assigned another one.
    store(m_defaults, setting, current);
}

void PreferencesManager::setTheme(Theme theme) {
    assign(settings::theme, m_theme, theme, &PreferencesManager::themeChanged);
}

void PreferencesManager::setRefreshRate(RefreshRate rate) {
    assign(settings::refreshRate, m_refreshRate, rate, &PreferencesManager::refreshRateChanged);
}

void PreferencesManager::setLaunchAtStartup(bool on) {
    assign(settings::launchAtStartup, m_launchAtStartup, on, &PreferencesManager::launchAtStartupChanged);
}

void PreferencesManager::setAutoRefreshQuota(bool on) {
    assign(settings::autoRefreshQuota, m_autoRefreshQuota, on, &PreferencesManager::autoRefreshQuotaChanged);
}

void PreferencesManager::setAlertAt80Quota(bool on) {
    assign(settings::alertAt80Quota, m_alertAt80Quota, on, &PreferencesManager::alertAt80QuotaChanged);
}

void PreferencesManager::setRateLimitAlerts(bool on) {
    assign(settings::rateLimitAlerts, m_rateLimitAlerts, on, &PreferencesManager::rateLimitAlertsChanged);
}

void PreferencesManager::setSessionResetAlerts(bool on) {
    assign(settings::sessionResetAlerts, m_sessionResetAlerts, on,
           &PreferencesManager::sessionResetAlertsChanged);
}

void PreferencesManager::setPaceAlerts(bool on) {
    assign(settings::paceAlerts, m_paceAlerts, on, &PreferencesManager::paceAlertsChanged);
}

void PreferencesManager::setKeepHistory(bool on) {
    setKeepHistoryAsked(true);
    assign(settings::keepHistory, m_keepHistory, on, &PreferencesManager::keepHistoryChanged);
}

void PreferencesManager::setKeepHistoryAsked(bool asked) {
    assign(settings::keepHistoryAsked, m_keepHistoryAsked, asked, &PreferencesManager::questionAnswered);
}

void PreferencesManager::setBarExtensionAsked(bool asked) {
    assign(settings::barExtensionAsked, m_barExtensionAsked, asked, &PreferencesManager::questionAnswered);
}

void PreferencesManager::setLogFolders(const QStringList &folders) {
    assign(settings::logFolders, m_logFolders, folders, &PreferencesManager::logFoldersChanged);
}

void PreferencesManager::setFigures(FigureChoice choice) {
    assign(settings::figures, m_figures, choice, &PreferencesManager::figuresChanged);
}

void PreferencesManager::setMonthlySpendLimit(double limit) {
    publish(m_monthlySpendLimit, limit, &PreferencesManager::monthlySpendLimitChanged);
}

} // namespace burnwick
