// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/StateFixture.h"

namespace burnwick::test {

ScriptedAnswer usageAnswer(double fiveHourPct, const std::string &extra) {
    ScriptedAnswer answer;
    answer.body = R"({"five_hour":{"utilization":)" + QByteArray::number(fiveHourPct) +
                  R"(,"resets_at":"2025-06-10T14:05:30Z"},)"
                  R"("seven_day":{"utilization":31,"resets_at":"2025-06-14T02:10:00Z"},)"
                  R"("seven_day_omelette":{"utilization":8,"resets_at":"2025-06-15T14:30:00Z"},)"
                  R"("extra_usage":)" +
                  QByteArray::fromStdString(extra) + "}";
    return answer;
}

StateFixture::StateFixture()
    : m_account(endpoints(), m_store, m_clock, m_calendar)
    , m_state(services()) {
    // So that the two timers have different intervals.
    m_preferences.setRefreshRate(RefreshRate::oneMin);
}

Endpoints StateFixture::endpoints() const {
    Endpoints endpoints = Endpoints::load(m_defaults);
    endpoints.apiBaseURL = m_server.url();
    endpoints.statusBaseURL = m_server.url();
    return endpoints;
}

AppState::Services StateFixture::services(const std::filesystem::path &home) {
    return {{m_preferences, JSONLParser(home), [this] { return m_calendar; }, m_clock, m_scheduler,
             platform::openDirectoryEventSource, platform::openTreeEventSource, &m_ledger},
            {m_preferences, m_clock, m_scheduler, m_account, m_terminal, [this] { ++m_loginPagesOpened; },
             [this] { return m_jitter; }}};
}

} // namespace burnwick::test
