// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/StateFixture.h"
#include "ui/dashboard/MainWindowView.h"

#include <string>
#include <vector>

namespace burnwick::test {

struct DashboardScene;

/// The usage endpoint's answer with which the dashboard has all its panels.
extern const ScriptedAnswer withExtraUsage;

/// The dashboard's services with sample data.
class DashboardFixture : public StateFixture {
public:
    DashboardFixture();

    [[nodiscard]] MainWindowView::Services windowServices() {
        return {m_state,
                m_preferences,
                m_clock,
                m_scheduler,
                [] { return 30; },
                nullptr,
                [this](const QUrl &url) { m_opened << url.toString(); }};
    }

    /// Adds logs of the last days with three models.
    DashboardFixture &addHistory(int days = 61);
    /// Lets the dashboard ask whether to keep the history.
    DashboardFixture &askToKeep();
    /// Adds a log with that many models, which have long names.
    DashboardFixture &addModels(int count);
    /// Adds a login and scripts the usage endpoint.
    DashboardFixture &logIn(const ScriptedAnswer &usage);
    DashboardFixture &logIn(double fiveHourPct) { return logIn(usageAnswer(fiveHourPct)); }
    /// Scripts the status page with the states of Claude Code and of the API.
    DashboardFixture &answerStatus(const QByteArray &claudeCode, const QByteArray &api);
    /// Passes that time.
    DashboardFixture &pass(std::chrono::seconds time) {
        m_clock.advance(time);
        return *this;
    }
    /// Shows these limits, also in the panel of the quota. Call it after settle(): the next refresh removes
    /// them.
    void setCourses(const std::vector<LimitCourse> &courses);
    /// Shows these exact figures until the next reading of the logs. Call it after settle().
    void setBreakdown(UsageBreakdown breakdown);
    void setTimeFilter(TimeFilter filter) { m_state.setTimeFilter(filter); }
    /// Shows the quota as stale, and a request in ten minutes.
    void loseTheQuota();
    void startLogin() { m_state.connect(); }
    /// Starts the state and waits for the logs and the status page.
    void begin();
    /// The same, and waits for the account's state.
    void settle();
    /// Shows the window in the scene's state.
    void play(const DashboardScene &scene, MainWindowView &window);

    QStringList m_opened; ///< the addresses that the window opened

private:
    /// For changes that no source makes yet.
    [[nodiscard]] Snapshot &snapshot() { return const_cast<Snapshot &>(m_state.snapshot()); }
};

/// A state of the dashboard for pictures and tests.
struct DashboardScene {
    std::string name;
    void (*prepare)(DashboardFixture &fixture);
    std::vector<std::string> texts;       ///< the beginnings of visible texts
    std::vector<std::string> absent = {}; ///< no visible text begins with these
    int tab = 0;
    const char *pressed = nullptr; ///< the name of a button that is pressed at the end

    friend std::ostream &operator<<(std::ostream &out, const DashboardScene &scene) {
        return out << scene.name;
    }
};

/// With those of limitScenes() and projectScenes().
[[nodiscard]] const std::vector<DashboardScene> &dashboardScenes();
/// The states of the projects.
[[nodiscard]] std::vector<DashboardScene> projectScenes();
/// The states of the account's limits.
[[nodiscard]] std::vector<DashboardScene> limitScenes();

} // namespace burnwick::test
