// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/FigureChoice.h"
#include "prefs/RefreshRate.h"
#include "prefs/Theme.h"

#include <QObject>
#include <QStringList>

namespace burnwick {

template <typename Value>
struct Setting;
class UserDefaults;

/// The user's settings. Loads them at construction; emits each change and then stores it. Assigning the
/// current value emits no signal, but stores it too. Main thread only.
class PreferencesManager final : public QObject {
    Q_OBJECT

public:
    /// The store must outlive this object.
    explicit PreferencesManager(UserDefaults &defaults, QObject *parent = nullptr);

    [[nodiscard]] Theme theme() const { return m_theme; }
    [[nodiscard]] RefreshRate refreshRate() const { return m_refreshRate; }
    /// The user's choice. The caller registers the login item.
    [[nodiscard]] bool launchAtStartup() const { return m_launchAtStartup; }
    [[nodiscard]] bool autoRefreshQuota() const { return m_autoRefreshQuota; }
    [[nodiscard]] bool alertAt80Quota() const { return m_alertAt80Quota; }
    [[nodiscard]] bool rateLimitAlerts() const { return m_rateLimitAlerts; }
    [[nodiscard]] bool sessionResetAlerts() const { return m_sessionResetAlerts; }
    [[nodiscard]] bool paceAlerts() const { return m_paceAlerts; }
    /// The user's choice. The caller sets up the ledger.
    [[nodiscard]] bool keepHistory() const { return m_keepHistory; }
    /// Whether the user has ever answered the question to keep the history, also by setKeepHistory().
    [[nodiscard]] bool keepHistoryAsked() const { return m_keepHistoryAsked; }
    /// Whether the user has answered the question to show the title in the desktop's bar.
    [[nodiscard]] bool barExtensionAsked() const { return m_barExtensionAsked; }
    /// Folders with logs besides the usual ones, as the user named them.
    [[nodiscard]] const QStringList &logFolders() const { return m_logFolders; }
    [[nodiscard]] FigureChoice figures() const { return m_figures; }
    /// US dollars a month.
    [[nodiscard]] double monthlySpendLimit() const { return m_monthlySpendLimit; }

    void setTheme(Theme theme);
    void setRefreshRate(RefreshRate rate);
    void setLaunchAtStartup(bool on);
    void setAutoRefreshQuota(bool on);
    void setAlertAt80Quota(bool on);
    void setRateLimitAlerts(bool on);
    void setSessionResetAlerts(bool on);
    void setPaceAlerts(bool on);
    /// Also answers the question.
    void setKeepHistory(bool on);
    void setKeepHistoryAsked(bool asked);
    void setBarExtensionAsked(bool asked);
    void setLogFolders(const QStringList &folders);
    void setFigures(FigureChoice choice);
    /// For the running program only: never writes to the store.
    void setMonthlySpendLimit(double limit);

Q_SIGNALS:
    void themeChanged(Theme theme);
    void refreshRateChanged(RefreshRate rate);
    void launchAtStartupChanged(bool on);
    void autoRefreshQuotaChanged(bool on);
    void alertAt80QuotaChanged(bool on);
    void rateLimitAlertsChanged(bool on);
    void sessionResetAlertsChanged(bool on);
    void paceAlertsChanged(bool on);
    void keepHistoryChanged(bool on);
    /// The answer to a question was stored.
    void questionAnswered(bool answered);
    void logFoldersChanged(QStringList folders);
    void figuresChanged(FigureChoice choice);
    void monthlySpendLimitChanged(double limit);

private:
    template <typename Value>
    using ChangeSignal = void (PreferencesManager::*)(Value);

    template <typename Value>
    void publish(Value &current, Value value, ChangeSignal<Value> changed);
    template <typename Value>
    void assign(const Setting<Value> &setting, Value &current, Value value, ChangeSignal<Value> changed);

    UserDefaults &m_defaults;
    Theme m_theme;
    RefreshRate m_refreshRate;
    bool m_launchAtStartup;
    bool m_autoRefreshQuota;
    bool m_alertAt80Quota;
    bool m_rateLimitAlerts;
    bool m_sessionResetAlerts;
    bool m_paceAlerts;
    bool m_keepHistory;
    bool m_keepHistoryAsked;
    bool m_barExtensionAsked;
    QStringList m_logFolders;
    FigureChoice m_figures;
    double m_monthlySpendLimit;
};

} // namespace burnwick
