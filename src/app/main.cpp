// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "app/AppDelegate.h"
#include "app/StartOptions.h"
#include "app/TerminationSignals.h"
#include "model/Version.h"
#include "platform/Platform.h"
#include "platform/Process.h"

#include <QApplication>
#include <QFontDatabase>

#include <future>
#include <iostream>
#include <optional>
#include <variant>

namespace burnwick {

namespace {

enum ExitCode { exitSuccess = 0, exitFailure = 1, exitWrongOptions = 2 };

QStringList toStringList(int argc, char **argv) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments += QString::fromLocal8Bit(argv[i]);
    return arguments;
}

void describeApplication() {
    QApplication::setApplicationName(QStringLiteral("burnwick"));
    QApplication::setApplicationDisplayName(QStringLiteral("Burnwick"));
    QApplication::setApplicationVersion(QString::fromStdString(std::string(version())));
    QApplication::setDesktopFileName(QStringLiteral("burnwick"));
    // The status item stays when the window is closed, and a click on it brings the window back.
    QApplication::setQuitOnLastWindowClosed(false);
}

/// Runs the program, or forwards the request to the running instance.
int run(ApplicationStartup &startup, const ApplicationRequest &request, bool newInstance) {
    const TerminationSignals signals;
    QObject::connect(&signals, &TerminationSignals::received, qApp, &QApplication::quit);
    std::optional<AppDelegate> delegate;
    QObject::connect(qApp, &QApplication::aboutToQuit, qApp, [&delegate] {
        if (delegate)
            delegate->terminate();
    });
    if (newInstance) {
        delegate.emplace();
        delegate->launch(request);
        return QApplication::exec();
    }
    // Destroyed before the delegate: no request reaches a destroyed delegate, and a new start becomes the
    // instance while this process stores its tokens.
    const auto instance = platform::makeApplicationInstance();
    instance->claim(request, [&](InstanceClaim outcome) {
        if (outcome == InstanceClaim::handedOver || outcome == InstanceClaim::notHandedOver) {
            startup.endWithoutWindow();
            QApplication::exit(outcome == InstanceClaim::handedOver ? exitSuccess : exitFailure);
            return;
        }
        delegate.emplace();
        delegate->launch(request);
        instance->setRequestHandler(
            [&delegate](const ApplicationRequest &later) { delegate->perform(later); });
    });
    return QApplication::exec();
}

} // namespace

} // namespace burnwick

int main(int argc, char **argv) {
    const burnwick::platform::ProcessScope process;
    // Before the application object, which needs a display.
    if (const auto information = burnwick::informationAskedFor(burnwick::toStringList(argc, argv))) {
        std::cout << information->toStdString();
        return process.end(burnwick::exitSuccess);
    }
    const auto startup = burnwick::platform::makeApplicationStartup();
    if (const auto fault = startup->prepare()) {
        std::cerr << "burnwick: " << *fault << " In a terminal burnwick-report prints the figures.\n";
        return process.end(burnwick::exitFailure);
    }
    QApplication application(argc, argv);
    const burnwick::StartupActivation activation = startup->begin();
    burnwick::describeApplication();
    // The first text needs the list of fonts. Another thread makes it while this one waits for the bus, and
    // ends before the application object.
    const auto fonts = std::async([] { return QFontDatabase::families(); });

    const auto options = burnwick::parseStartOptions(QApplication::arguments());
    if (const auto *wrong = std::get_if<burnwick::WrongStart>(&options)) {
        std::cerr << "burnwick: " << wrong->reason.toStdString() << " See burnwick --help.\n";
        return process.end(burnwick::exitWrongOptions);
    }
    const auto &start = std::get<burnwick::StartOptions>(options);
    return process.end(burnwick::run(*startup, {start.action, activation}, start.newInstance));
}
