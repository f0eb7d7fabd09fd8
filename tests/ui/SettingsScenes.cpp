// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/SettingsScenes.h"

namespace burnwick::test {

SettingsView::Services SettingsFixture::settingsServices() {
    const auto open = [this](const QUrl &url) { m_openedPages.append(url.toString()); };
    return {m_preferences,
            m_loginItem,
            m_center,
            m_desktop,
            {m_account.http, m_scheduler, m_server.url(), open},
            QUrl(u"https://burnwick.test/feedback"_qs),
            [this] { return m_reducedMotion; }};
}

const std::vector<SettingsScene> &settingsScenes() {
    using Authorization = NotificationCenter::Authorization;
    static const std::vector<SettingsScene> scenes{
        {"settings", Authorization::authorized, "Enabled", {"Allow", "Open Settings"}},
        {"settings-denied", Authorization::denied, "Open Settings", {"Allow", "Enabled"}},
        {"settings-undetermined", Authorization::notDetermined, "Allow", {"Open Settings", "Enabled"}},
    };
    return scenes;
}

} // namespace burnwick::test
