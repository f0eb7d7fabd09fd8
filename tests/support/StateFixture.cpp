// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/StateFixture.h"

namespace burnwick::test {

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

AppState::Services StateFixture::services() {
    return {m_preferences,
            JSONLParser(m_home.path(), m_calendar, m_clock),
            [this] { return m_calendar; },
            m_clock,
            m_scheduler,
            platform::openDirectoryEventSource,
            m_account.keychain,
            m_account.oauthFetcher,
            m_account.statusFetcher,
            m_terminal,
            [this] { ++m_loginPagesOpened; },
            m_alerts};
}

} // namespace burnwick::test
