// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/FakeStatusNotifierWatcher.h"
#include "support/LogTreeFixture.h"
#include "support/ShiftedTime.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QProcess>

#include <csignal>

namespace burnwick::test {

/// The real program on a home of its own, seen from the status area of a desktop.
class ProgramFixture : public testing::Test {
protected:
    explicit ProgramFixture(const PrivateBus &bus = sessionBusOfTests())
        : m_watcher(bus) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const QString home = QString::fromStdString(m_home.path().string());
        environment.insert(QStringLiteral("HOME"), home);
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/.config"));
        environment.insert(QStringLiteral("XDG_CACHE_HOME"), home + QStringLiteral("/.cache"));
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus.address());
        m_program.setProcessEnvironment(environment);
        m_program.setProcessChannelMode(QProcess::MergedChannels);
    }
    ~ProgramFixture() override {
        m_program.kill();
        m_program.waitForFinished();
    }

    /// Its windows are to be real ones, on that display.
    void showOn(const QString &display) {
        QProcessEnvironment environment = m_program.processEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        environment.insert(QStringLiteral("DISPLAY"), display);
        m_program.setProcessEnvironment(environment);
    }
    /// With a clock of its own.
    bool startProgram(const ShiftedTime &time) {
        QProcessEnvironment environment = m_program.processEnvironment();
        time.applyTo(environment);
        m_program.setProcessEnvironment(environment);
        return startProgram();
    }
    bool startProgram() {
        m_watcher.takeName("panel-6-systray");
        m_program.start(QStringLiteral(BURNWICK_PROGRAM), QStringList());
        return m_watcher.waitForItems(1);
    }
    [[nodiscard]] QString title() const {
        return m_watcher.readItem().value(QStringLiteral("Title")).toString();
    }
    testing::AssertionResult itemShows(const char *expected) {
        if (waitFor([&] { return title() == QString::fromUtf8(expected); }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "it shows " << title().toStdString();
    }
    /// Whether the program ended by itself with 0 soon after it was told to.
    bool endsWhenTold(int signal) {
        // Without a process its number would be 0, which stands for all of the test's own group.
        if (m_program.state() != QProcess::Running)
            return false;
        ::kill(static_cast<pid_t>(m_program.processId()), signal);
        return m_program.waitForFinished(5'000) && m_program.exitStatus() == QProcess::NormalExit &&
               m_program.exitCode() == 0;
    }

    LogHome m_home;
    FakeStatusNotifierWatcher m_watcher;
    QProcess m_program;
};

} // namespace burnwick::test
