// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/login/AutostartLoginItem.h"
#include "support/StateFixture.h"
#include "support/VisibleControls.h"
#include "ui/settings/SettingsView.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace burnwick::test {

/// A notification service whose authorisation the test sets.
class FakeNotificationCenter final : public NotificationCenter {
public:
    void readAuthorization(std::function<void(Authorization)> answer) override {
        const auto reply = [answer = std::move(answer), now = status] { answer(now); };
        if (holdsAnswers)
            m_held.push_back(reply);
        else
            QMetaObject::invokeMethod(QCoreApplication::instance(), reply, Qt::QueuedConnection);
    }
    void requestAuthorization(std::function<void(AuthorizationOutcome)> answer) override {
        ++requests;
        status = statusOnRequest;
        answer({status == Authorization::authorized, std::nullopt});
    }
    void setAuthorizationChangedHandler(std::function<void()> handler) override {
        m_changed = std::move(handler);
    }
    void add(const UserNotification &, std::function<void(std::optional<std::string>)>) override {}
    void setActivateHandler(ActivateHandler) override {}

    void change(Authorization to) {
        status = to;
        if (m_changed)
            m_changed();
    }
    void release() {
        for (const auto &reply : std::exchange(m_held, {}))
            reply();
    }
    [[nodiscard]] bool hasChangedHandler() const { return static_cast<bool>(m_changed); }

    Authorization status = Authorization::authorized;
    Authorization statusOnRequest = Authorization::authorized;
    int requests = 0;
    bool holdsAnswers = false; ///< of readAuthorization(), until release()

private:
    std::vector<std::function<void()>> m_held;
    std::function<void()> m_changed;
};

class FakeDesktopSettings final : public DesktopSettings {
public:
    void openNotifications() override { ++opened; }

    int opened = 0;
};

/// The settings with a temporary store and a temporary autostart folder.
class SettingsFixture : public StateFixture {
protected:
    [[nodiscard]] SettingsView::Services settingsServices() {
        const auto open = [this](const QUrl &url) { m_openedPages.append(url.toString()); };
        return {m_preferences,
                m_loginItem,
                m_center,
                m_desktop,
                {m_account.http, m_scheduler, m_server.url(), ReleaseForm::page, open},
                {[] { return 30; }, [this]() -> const UsageFigures & { return m_usage; },
                 [this](bool withLines) {
                     ++m_timesForgotten;
                     m_forgotLines = withLines;
                     return m_canForget;
                 }},
                {[] { return QStringList{QStringLiteral("~/.claude/projects")}; },
                 [this](const QString &folder) { return m_folderProblems.value(folder); }},
                QUrl(QStringLiteral("https://burnwick.test/feedback")),
                [] { return false; }};
    }
    SettingsView &openView() {
        m_view.emplace(settingsServices()).show();
        QCoreApplication::processEvents();
        return *m_view;
    }
    bool shows(const char *text) { return namesIn(*m_view).contains(QString::fromUtf8(text)); }
    bool waitForText(const char *text) {
        return waitFor([this, text] { return shows(text); });
    }

    std::filesystem::path m_autostart = m_home.path() / "autostart";
    AutostartLoginItem m_loginItem{m_autostart, QCoreApplication::applicationFilePath()};
    FakeNotificationCenter m_center;
    FakeDesktopSettings m_desktop;
    UsageFigures m_usage{m_calendar};
    int m_timesForgotten = 0;
    bool m_forgotLines = false;
    bool m_canForget = true;
    QHash<QString, QString> m_folderProblems;
    QStringList m_openedPages;
    std::optional<SettingsView> m_view;
};

/// A state of the settings for pictures and tests.
struct SettingsScene {
    std::string name;
    NotificationCenter::Authorization authorization;
    bool isAtEnd = false; ///< scrolled to it
    bool asks = false;    ///< whether to forget the history; the picture has this alert alone

    friend std::ostream &operator<<(std::ostream &out, const SettingsScene &scene) {
        return out << scene.name;
    }
};

inline const std::vector<SettingsScene> &settingsScenes() {
    using Authorization = NotificationCenter::Authorization;
    static const std::vector<SettingsScene> scenes{
        {"settings", Authorization::authorized},
        {"settings-end", Authorization::authorized, true},
        {"settings-forget", Authorization::authorized, true, true},
        {"settings-denied", Authorization::denied},
        {"settings-undetermined", Authorization::notDetermined},
    };
    return scenes;
}

} // namespace burnwick::test
