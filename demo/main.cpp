// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "app/TerminationSignals.h"
#include "demo/DemoHome.h"
#include "demo/StandInServices.h"
#include "model/Clock.h"
#include "prefs/Theme.h"
#include "support/LogTreeFixture.h"
#include "support/ScriptedServer.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTimer>

#include <algorithm>
#include <csignal>
#include <iostream>

#include <sys/prctl.h>

namespace burnwick::demo {

namespace {

/// The user's environment with another home.
QProcessEnvironment environmentWith(const QString &home) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // The default location of the X display's key is the user's home.
    const QString displayKey = QDir::home().filePath(QStringLiteral(".Xauthority"));
    if (!environment.contains(QStringLiteral("XAUTHORITY")) && QFileInfo::exists(displayKey))
        environment.insert(QStringLiteral("XAUTHORITY"), displayKey);
    environment.insert(QStringLiteral("HOME"), home);
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/.config"));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/.local/share"));
    environment.insert(QStringLiteral("XDG_STATE_HOME"), home + QStringLiteral("/.local/state"));
    environment.insert(QStringLiteral("XDG_CACHE_HOME"), home + QStringLiteral("/.cache"));
    environment.remove(QStringLiteral("CLAUDE_CONFIG_DIR"));
    // A login would change the user's account: many terminals run in a server process with the user's home.
    environment.insert(QStringLiteral("TERMINAL"), QStringLiteral("true"));
    return environment;
}

/// Runs the program at that path until its end and returns its exit code.
int run(const QString &path, const QString &theme) {
    const TerminationSignals signals;
    const test::LogHome home;
    const SystemClock clock;
    test::ScriptedServer services;
    standIn(services, clock.now());
    addLogs(home, clock.now(), Calendar::current());
    addSamples(home.path(), limitsAt(clock.now()), Calendar::current());
    addLogin(home.path());
    addSettings(home.path(), services.url(), theme);

    QProcess program;
    program.setProcessEnvironment(environmentWith(QString::fromStdString(home.path().string())));
    program.setProcessChannelMode(QProcess::ForwardedChannels);
    program.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    QObject::connect(&signals, &TerminationSignals::received, &program, [&program] {
        constexpr std::chrono::seconds patience{3};
        program.terminate();
        QTimer::singleShot(patience, &program, &QProcess::kill);
    });
    QObject::connect(&program, &QProcess::finished, qApp, [](int exitCode, QProcess::ExitStatus status) {
        QCoreApplication::exit(status == QProcess::NormalExit ? exitCode : EXIT_FAILURE);
    });
    QObject::connect(&program, &QProcess::errorOccurred, qApp, [&program](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        std::cerr << "burnwick-demo: " << program.errorString().toStdString() << '\n';
        QCoreApplication::exit(EXIT_FAILURE);
    });
    QMetaObject::invokeMethod(
        &program, [&] { program.start(path, {QStringLiteral("--new-instance")}); }, Qt::QueuedConnection);
    return QCoreApplication::exec();
}

} // namespace

} // namespace burnwick::demo

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const QCommandLineOption theme(QStringLiteral("theme"), QStringLiteral("light, dark or system"),
                                   QStringLiteral("name"), QStringLiteral("system"));
    const QCommandLineOption program(QStringLiteral("program"), QStringLiteral("the Burnwick to run"),
                                     QStringLiteral("path"), QStringLiteral(BURNWICK_PROGRAM));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Runs Burnwick on a made-up home with made-up services. Nothing of the user's is read or written."));
    parser.addHelpOption();
    parser.addOptions({theme, program});
    parser.process(application);
    const QString chosen = parser.value(theme);
    if (std::ranges::find(burnwick::allThemes, chosen, burnwick::rawValueOf) == burnwick::allThemes.end()) {
        std::cerr << "burnwick-demo: there is no theme '" << chosen.toStdString() << "'\n";
        return 2;
    }
    return burnwick::demo::run(parser.value(program), chosen);
}
