// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/XfcePanel.h"

#include <QtCore/QFile>

#include <csignal>

#include <sys/prctl.h>

namespace burnwick::test {

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
    writeFile(directory / "config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", settings);
    const QString name = QStringLiteral("org.xfce.Xfconf.service");
    QFile installed(QStringLiteral("/usr/share/dbus-1/services/") + name);
    installed.open(QIODevice::ReadOnly);
    const std::string environment = "Exec=/usr/bin/env XDG_CONFIG_HOME=" + (directory / "config").string();
    const QByteArray service =
        installed.readAll().replace("Exec=", QByteArray::fromStdString(environment + ' '));
    writeFile(directory / "services" / name.toStdString(), service.toStdString());
    return QString::fromStdString((directory / "services").string());
}

} // namespace

XfcePanel::XfcePanel()
    : m_bus(writeService(m_directory.path())) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_display.name());
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_bus.address());
    m_panel.setProcessEnvironment(environment);
    m_panel.setStandardErrorFile(QProcess::nullDevice());
    // A crashing test runs no destructors.
    m_panel.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

XfcePanel::~XfcePanel() {
    end();
}

void XfcePanel::start() {
    m_panel.start(QStringLiteral("xfce4-panel"), {QStringLiteral("--disable-wm-check")});
}

void XfcePanel::end() {
    m_panel.terminate();
    m_panel.waitForFinished();
}

} // namespace burnwick::test
