// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/PrivateBus.h"

#include <QtCore/QFile>

#include <csignal>
#include <sys/prctl.h>

namespace burnwick {

namespace {

constexpr auto busConfig = R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  %2
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow receive_sender="*"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

} // namespace

PrivateBus::PrivateBus(const QString &serviceFolder) {
    const QString configPath = m_directory.filePath(QStringLiteral("bus.conf"));
    QFile config(configPath);
    if (!config.open(QIODevice::WriteOnly))
        return;
    const QString services = serviceFolder.isEmpty()
                                 ? QString()
                                 : QStringLiteral("<servicedir>%1</servicedir>").arg(serviceFolder);
    config.write(QString::fromLatin1(busConfig).arg(m_directory.path(), services).toUtf8());
    config.close();

    // A crashing test runs no destructors.
    m_daemon.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    // As root it logs warnings about limits.
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--config-file=") + configPath, QStringLiteral("--nofork"),
                    QStringLiteral("--print-address")});
    while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead()) {
    }
    m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
}

PrivateBus::~PrivateBus() {
    kill();
}

void PrivateBus::becomeSessionBus() const {
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_address.toUtf8());
}

QDBusConnection PrivateBus::connect(const QString &name) const {
    return QDBusConnection::connectToBus(m_address, name);
}

void PrivateBus::kill() {
    m_daemon.kill();
    m_daemon.waitForFinished();
}

void PrivateBus::freeze() const {
    // An ended daemon has the id 0, which addresses the whole process group of the test.
    if (m_daemon.processId() > 0)
        ::kill(static_cast<pid_t>(m_daemon.processId()), SIGSTOP);
}

void PrivateBus::thaw() const {
    if (m_daemon.processId() > 0)
        ::kill(static_cast<pid_t>(m_daemon.processId()), SIGCONT);
}

} // namespace burnwick
