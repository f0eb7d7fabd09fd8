// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/StateFixture.h"
#include "ui/dashboard/MainWindowView.h"

#include <string>
#include <vector>

namespace burnwick::test {

/// The dashboard over a state that is brought where a scene needs it.
class DashboardFixture : public StateFixture {
public:
    DashboardFixture();

    [[nodiscard]] MainWindowView::Services windowServices() {
        return {m_state, m_preferences, m_calendar, m_clock, m_scheduler};
    }

    /// Two months of logs that end now, as three models leave them.
    void addHistory();
    /// A day's use of each of the models.
    void addModels(const std::vector<std::string> &names);
    void logIn() { m_store.blob = R"({"claudeAiOauth":{"accessToken":"a"}})"; }
    /// What the usage endpoint will say; `extra` is the JSON of the extra usage.
    void answerUsage(double fiveHourPct, const std::string &extra = "null");
    /// What the status page will say of Claude Code and of the API.
    void answerStatus(const QByteArray &claudeCode, const QByteArray &api);
    void rejectToken() { m_server.script("/api/oauth/usage", {{401}}); }
    void logInAgain() { m_state.connect(); }
    /// Starts the state and waits until all that it asked for has come.
    void settle();
};

/// A state that people meet, to be looked at and read.
struct DashboardScene {
    std::string name;
    void (*prepare)(DashboardFixture &fixture);
    int tab = 0;
    std::vector<std::string> texts;  ///< to be found in the window
    std::vector<std::string> absent; ///< not to be found there
};

[[nodiscard]] const std::vector<DashboardScene> &dashboardScenes();

} // namespace burnwick::test
