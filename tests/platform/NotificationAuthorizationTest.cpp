// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/FakeNotificationServer.h"
#include "platform/linux/LinuxNotificationCenter.h"
#include "support/LogTreeFixture.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>
#include <optional>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;
using Authorization = NotificationCenter::Authorization;

constexpr auto noLimit = 1h;
/// For answers that never come; others come before it on a busy machine too.
constexpr auto shortLimit = 500ms;

Authorization authorizationOf(LinuxNotificationCenter &center) {
    std::optional<Authorization> answer;
    center.readAuthorization([&](Authorization authorization) { answer = authorization; });
    EXPECT_TRUE(waitFor([&] { return answer.has_value(); }));
    return answer.value();
}

NotificationCenter::AuthorizationOutcome requestOf(LinuxNotificationCenter &center) {
    std::optional<NotificationCenter::AuthorizationOutcome> answer;
    center.requestAuthorization([&](const auto &outcome) { answer = outcome; });
    EXPECT_TRUE(waitFor([&] { return answer.has_value(); }));
    return answer.value();
}

/// A desktop of that name, with the user's settings in a folder of its own.
class NotificationAuthorization : public testing::Test {
protected:
    NotificationAuthorization() {
        setVariable("XDG_CONFIG_HOME", m_directory.path().c_str());
        setVariable("XDG_CURRENT_DESKTOP", "");
    }
    ~NotificationAuthorization() override {
        for (const auto &[name, value] : m_before)
            qputenv(name.c_str(), value);
    }

    void setVariable(const std::string &name, const QByteArray &value) {
        m_before.emplace(name, qgetenv(name.c_str()));
        qputenv(name.c_str(), value);
    }
    /// A script takes the place of GNOME's command for settings.
    void replaceGsettings(const std::string &script) {
        const fs::path command = m_directory.path() / "bin" / "gsettings";
        test::writeFile(command, "#!/bin/sh\n" + script);
        fs::permissions(command, fs::perms::owner_all);
        setVariable("PATH", command.parent_path().c_str());
    }

    test::TemporaryDirectory m_directory;

private:
    std::map<std::string, QByteArray> m_before;
};

TEST_F(NotificationAuthorization, DependsOnWhetherAServerAnswers) {
    LinuxNotificationCenter center(QDBusConnection::sessionBus(), shortLimit);
    EXPECT_EQ(authorizationOf(center), Authorization::notDetermined);
    EXPECT_FALSE(requestOf(center).granted);
    EXPECT_NE(requestOf(center).error.value_or(""), "");
    {
        FakeNotificationServer server;
        EXPECT_EQ(authorizationOf(center), Authorization::authorized);
        EXPECT_TRUE(requestOf(center).granted);
        EXPECT_EQ(requestOf(center).error, std::nullopt);
        server.held = QStringList{QStringLiteral("GetServerInformation")};
        EXPECT_EQ(authorizationOf(center), Authorization::notDetermined);
        EXPECT_NE(requestOf(center).error.value_or(""), "");
        server.held.clear();
        server.failing = QStringList{QStringLiteral("GetServerInformation")};
        EXPECT_EQ(authorizationOf(center), Authorization::notDetermined);
    }
    // Nobody would start it again.
    EXPECT_EQ(authorizationOf(center), Authorization::notDetermined);
}

TEST_F(NotificationAuthorization, WithoutABusItIsNotDetermined) {
    const QString name = QStringLiteral("no-bus");
    LinuxNotificationCenter center(
        QDBusConnection::connectToBus(QStringLiteral("unix:path=/nonexistent/bus"), name), noLimit);
    EXPECT_EQ(authorizationOf(center), Authorization::notDetermined);
    EXPECT_NE(requestOf(center).error.value_or(""), "");
    QDBusConnection::disconnectFromBus(name);
}

TEST_F(NotificationAuthorization, ComingAndGoingServersAreAnnounced) {
    LinuxNotificationCenter center;
    int announcements = 0;
    center.setAuthorizationChangedHandler([&] { ++announcements; });
    EXPECT_EQ(authorizationOf(center), Authorization::notDetermined);
    announcements = 0;
    auto server = std::make_unique<FakeNotificationServer>();
    EXPECT_TRUE(waitFor([&] { return announcements == 1; }));
    EXPECT_EQ(authorizationOf(center), Authorization::authorized);
    server.reset();
    EXPECT_TRUE(waitFor([&] { return announcements == 2; }));
    EXPECT_EQ(authorizationOf(center), Authorization::notDetermined);
}

TEST_F(NotificationAuthorization, IsDeniedWhereGnomeSaysSo) {
    // Answers only to the question that is expected.
    const std::string answer = "[ \"$*\" = 'get org.gnome.desktop.notifications.application:"
                               "/org/gnome/desktop/notifications/application/burnwick/ enable' ] && echo ";
    const struct {
        const char *what;
        const char *desktop;
        std::string script;
        Authorization expected;
    } rows[] = {
        {"off", "GNOME", answer + "false", Authorization::denied},
        {"off, a desktop made of it", "ubuntu:GNOME", answer + "false", Authorization::denied},
        {"on", "GNOME", answer + "true", Authorization::authorized},
        {"another desktop", "XFCE", answer + "false", Authorization::authorized},
        {"no desktop", "", answer + "false", Authorization::authorized},
        {"no schema", "GNOME", "echo false; exit 1", Authorization::authorized},
        {"it hangs", "GNOME", "while :; do :; done", Authorization::authorized},
    };
    FakeNotificationServer server;
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        setVariable("XDG_CURRENT_DESKTOP", row.desktop);
        replaceGsettings(row.script);
        LinuxNotificationCenter center(QDBusConnection::sessionBus(), shortLimit);
        EXPECT_EQ(authorizationOf(center), row.expected);
    }
    setVariable("XDG_CURRENT_DESKTOP", "GNOME");
    fs::remove(m_directory.path() / "bin" / "gsettings");
    LinuxNotificationCenter center(QDBusConnection::sessionBus(), noLimit);
    EXPECT_EQ(authorizationOf(center), Authorization::authorized) << "without the command";
}

TEST_F(NotificationAuthorization, IsDeniedWherePlasmaSaysSo) {
    const struct {
        const char *what;
        const char *desktop;
        const char *settings;
        Authorization expected;
    } rows[] = {
        {"off", "KDE", "[Applications][burnwick]\nShowInHistory=true\nShowPopups=false\n",
         Authorization::denied},
        {"off, edited by hand", "KDE", "\n [Applications][burnwick] \n# off\nShowPopups = Off",
         Authorization::denied},
        {"on", "KDE", "[Applications][burnwick]\nShowPopups=true\n", Authorization::authorized},
        {"another application", "KDE",
         "[Applications][dolphin]\nShowPopups=false\n[Applications][burnwick]\nSeen=true\n",
         Authorization::authorized},
        {"another group after ours", "KDE",
         "[Applications][burnwick]\nSeen=true\n[Services][x]\nShowPopups=false\n", Authorization::authorized},
        {"another desktop", "XFCE", "[Applications][burnwick]\nShowPopups=false\n",
         Authorization::authorized},
        {"nothing", "KDE", "", Authorization::authorized},
    };
    FakeNotificationServer server;
    const fs::path settings = m_directory.path() / "plasmanotifyrc";
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        setVariable("XDG_CURRENT_DESKTOP", row.desktop);
        test::writeFile(settings, row.settings);
        LinuxNotificationCenter center;
        EXPECT_EQ(authorizationOf(center), row.expected);
    }
    setVariable("XDG_CURRENT_DESKTOP", "KDE");
    fs::remove(settings);
    LinuxNotificationCenter center;
    EXPECT_EQ(authorizationOf(center), Authorization::authorized) << "without the file";
}

TEST_F(NotificationAuthorization, ADenialIsNoErrorOfTheRequest) {
    FakeNotificationServer server;
    setVariable("XDG_CURRENT_DESKTOP", "KDE");
    test::writeFile(m_directory.path() / "plasmanotifyrc", "[Applications][burnwick]\nShowPopups=false\n");
    LinuxNotificationCenter center;
    EXPECT_FALSE(requestOf(center).granted);
    EXPECT_EQ(requestOf(center).error, std::nullopt);
    EXPECT_FALSE(server.calls.contains(QStringLiteral("GetServerInformation")));
}

} // namespace
} // namespace burnwick
