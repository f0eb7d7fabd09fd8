// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/MinuteTicks.h"
#include "ui/StateSubscription.h"

#include <QWidget>

#include <functional>
#include <optional>

class QButtonGroup;
class QStackedWidget;
class QUrl;
class QVBoxLayout;

namespace burnwick {

class AccountBar;
class AppState;
class BarExtension;
class LiveColumn;
class ModelsTab;
class OverviewTab;
class PreferencesManager;
class ProjectsTab;
class QuestionBar;
class TextLabel;
class WindowChrome;

/// The dashboard's content. Follows the state always, and the time while it is visible. Main thread only.
class MainWindowView final : public QWidget {
    Q_OBJECT

public:
    /// All of them must outlive the window.
    struct Services {
        AppState &appState;
        PreferencesManager &preferences;
        const Clock &clock;
        Scheduler &scheduler;
        std::function<int()> daysUntilCleanup;
        WindowChrome *chrome = nullptr;                 ///< null where the window manager decorates windows
        std::function<void(const QUrl &)> openURL = {}; ///< with the desktop's program
        BarExtension *barExtension = nullptr;           ///< null where there is none
    };

    explicit MainWindowView(Services services);

Q_SIGNALS:
    void settingsRequested();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    [[nodiscard]] QWidget *makeHeader();
    [[nodiscard]] QWidget *makeTabBar();
    [[nodiscard]] QWidget *makeBody();
    void addShortcuts();
    void decorate();
    void setDense(bool dense);
    void selectTab(int tab);
    void refreshQuota();
    void refreshAll();
    void followTime();
    void showState();

    Services m_services;
    QButtonGroup *m_tabs;
    QButtonGroup *m_filters;
    QStackedWidget *m_pages;
    QVBoxLayout *m_column; ///< all parts of the window
    QVBoxLayout *m_right = nullptr;
    LiveColumn *m_liveColumn;
    OverviewTab *m_overview;
    QuestionBar *m_question;
    ModelsTab *m_models;
    ProjectsTab *m_projects;
    AccountBar *m_accountBar;
    TextLabel *m_updated;
    std::optional<bool> m_dense;
    bool m_decorated = false;
    StateSubscription m_subscription;
    MinuteTicks m_ticks;
};

} // namespace burnwick
