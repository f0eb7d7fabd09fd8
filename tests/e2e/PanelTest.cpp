// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "display/StatusTitle.h"
#include "e2e/AccountFixture.h"

#include <cmath>

#include <sys/prctl.h>

namespace burnwick {
namespace {

constexpr auto settings = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=8;x=0;y=0"/>
      <property name="size" type="uint" value="30"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="6"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-6" type="string" value="systray"/>
  </property>
</channel>
)";

/// Returns the folder of the one service that the panel needs, which stores its settings.
QString writeService(const std::filesystem::path &directory) {
    test::writeFile(directory / "config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", settings);
    const QString name = QStringLiteral("org.xfce.Xfconf.service");
    QFile installed(QStringLiteral("/usr/share/dbus-1/services/") + name);
    installed.open(QIODevice::ReadOnly);
    const std::string environment = "Exec=/usr/bin/env XDG_CONFIG_HOME=" + (directory / "config").string();
    const QByteArray service =
        installed.readAll().replace("Exec=", QByteArray::fromStdString(environment + ' '));
    test::writeFile(directory / "services" / name.toStdString(), service.toStdString());
    return QString::fromStdString((directory / "services").string());
}

/// Xfce's panel with only its status area, at the lower edge of a virtual display, on a bus for its items.
class PanelSession {
protected:
    PanelSession() {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DISPLAY"), m_display.name());
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_bus.address());
        m_panel.setProcessEnvironment(environment);
        m_panel.setStandardErrorFile(QProcess::nullDevice());
        // A crashing test runs no destructors.
        m_panel.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    }
    ~PanelSession() { end(); }

    void start() { m_panel.start(QStringLiteral("xfce4-panel"), {QStringLiteral("--disable-wm-check")}); }
    void end() {
        m_panel.terminate();
        m_panel.waitForFinished();
    }

    test::VirtualDisplay m_display;
    test::TemporaryDirectory m_directory;
    PrivateBus m_bus{writeService(m_directory.path())};
    QProcess m_panel;
};

/// The real program beside the real status area of Xfce.
class PanelTest : protected PanelSession, public test::AccountFixture {
protected:
    PanelTest()
        : AccountFixture(m_bus) {}

    /// Returns the place of the item's dot in that colour on the panel.
    [[nodiscard]] std::optional<QPoint> dot(StatusIndicator indicator) {
        const auto [red, green, blue] = colorOf(indicator);
        std::uint32_t color = 0;
        for (const double part : {red, green, blue})
            color = color << 8 | static_cast<std::uint32_t>(std::lround(part * 0xFF));
        return m_display.find("xfce4-panel", color);
    }
};

TEST_F(PanelTest, TheItemShowsTheQuotaOpensTheWindowAndOutlivesThePanel) {
    m_server.script("/api/oauth/usage", {test::usage(95)});
    logIn();
    ASSERT_TRUE(launchOn(m_display));
    for (const char *panel : {"the panel starts after the program", "the panel starts again"}) {
        SCOPED_TRACE(panel);
        start();
        ASSERT_TRUE(waitFor([this] { return dot(StatusIndicator::red).has_value(); }));
        EXPECT_FALSE(dot(StatusIndicator::green));
        m_display.close("Burnwick");
        ASSERT_TRUE(waitFor([&] { return !m_display.shows("Burnwick"); }));
        EXPECT_TRUE(m_display.click(*dot(StatusIndicator::red)));
        EXPECT_TRUE(waitFor([&] { return m_display.shows("Burnwick"); }));
        end();
        ASSERT_TRUE(waitFor([this] { return !dot(StatusIndicator::red); }));
    }
    EXPECT_TRUE(endsAt(SIGTERM));
}

} // namespace
} // namespace burnwick
