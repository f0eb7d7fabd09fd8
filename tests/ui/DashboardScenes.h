// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/StateFixture.h"
#include "ui/dashboard/MainWindowView.h"

#include <string>
#include <vector>

namespace burnwick::test {

struct DashboardScene;

/// The dashboard over a state that is brought where a scene needs it.
class DashboardFixture : public StateFixture {
public:
    DashboardFixture();

    [[nodiscard]] MainWindowView::Services windowServices() {
        return {m_state, m_preferences, m_clock, m_scheduler};
    }

    /// Two months of logs that end now, as three models leave them.
    DashboardFixture &addHistory();
    /// A day's use of so many models with long names.
    DashboardFixture &addModels(int count);
    DashboardFixture &logIn();
    /// With what the usage endpoint will say; `extra` is the JSON of the extra usage.
    DashboardFixture &logIn(double fiveHourPct, const std::string &extra = "null");
    /// The usage endpoint's answer is held.
    DashboardFixture &logInSlowly(double fiveHourPct);
    /// What the status page will say of Claude Code and of the API.
    DashboardFixture &answerStatus(const QByteArray &claudeCode, const QByteArray &api);
    DashboardFixture &rejectToken();
    void logInAgain() { m_state.connect(); }
    /// Starts the state and waits until all but the quota has come.
    void begin();
    /// Starts the state and waits until all that it asked for has come.
    void settle();
    /// Shows the window and brings it to the scene.
    void play(const DashboardScene &scene, MainWindowView &window);
};

/// A state that people meet, to be looked at and read.
struct DashboardScene {
    std::string name;
    void (*prepare)(DashboardFixture &fixture);
    std::vector<std::string> texts;       ///< to be found in the window
    std::vector<std::string> absent = {}; ///< not to be found there
    int tab = 0;

    friend std::ostream &operator<<(std::ostream &out, const DashboardScene &scene) {
        return out << scene.name;
    }
};

[[nodiscard]] const std::vector<DashboardScene> &dashboardScenes();

} // namespace burnwick::test
