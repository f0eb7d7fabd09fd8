// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/FakeStatusNotifierWatcher.h"
#include "support/LogTreeFixture.h"
#include "support/VirtualDisplay.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QProcess>

#include <csignal>
#include <utility>
#include <vector>

namespace burnwick::test {

/// The real program on a temporary home, beside a fake status area.
class ProgramFixture : public testing::Test {
protected:
    using Variables = std::vector<std::pair<const char *, QString>>;

    explicit ProgramFixture(const PrivateBus &bus = sessionBusOfTests())
        : m_watcher(bus) {
        const QString home = QString::fromStdString(m_home.path().string());
        m_program.setProcessEnvironment(QProcessEnvironment::systemEnvironment());
        set({{"HOME", home},
             {"XDG_CONFIG_HOME", home + QStringLiteral("/.config")},
             {"XDG_CACHE_HOME", home + QStringLiteral("/.cache")},
             {"XDG_DATA_HOME", home + QStringLiteral("/.local/share")},
             {"DBUS_SESSION_BUS_ADDRESS", bus.address()}});
        m_program.setProcessChannelMode(QProcess::MergedChannels);
    }
    ~ProgramFixture() override {
        m_program.kill();
        m_program.waitForFinished();
    }

    [[nodiscard]] QProcessEnvironment environmentWith(const Variables &variables) const {
        QProcessEnvironment environment = m_program.processEnvironment();
        for (const auto &[name, value] : variables)
            environment.insert(QString::fromLatin1(name), value);
        return environment;
    }
    void set(const Variables &variables) { m_program.setProcessEnvironment(environmentWith(variables)); }
    void launch(const QStringList &arguments = {}) {
        m_program.start(QStringLiteral(BURNWICK_PROGRAM), arguments);
    }
    /// Starts the program with windows on the display and waits for the first one.
    bool launchOn(const VirtualDisplay &display, const QStringList &arguments = {}) {
        set({{"QT_QPA_PLATFORM", QStringLiteral("xcb")}, {"DISPLAY", display.name()}});
        launch(arguments);
        return waitFor([&] { return display.shows("Burnwick"); });
    }
    /// Launches the program beside a status area and waits for its item.
    bool startProgram() {
        m_watcher.takeName("panel-6-systray");
        launch();
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
    /// Whether the program exits with 0 within 5 seconds of the signal.
    bool endsAt(int signal) {
        // An ended process has the id 0, which addresses the whole process group of the test.
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
