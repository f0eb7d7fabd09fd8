// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "app/AppDelegate.h"
#include "app/TerminationSignals.h"
#include "model/Version.h"

#include <QApplication>

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("burnwick"));
    QApplication::setApplicationDisplayName(QStringLiteral("Burnwick"));
    const auto version = burnwick::version();
    QApplication::setApplicationVersion(
        QString::fromUtf8(version.data(), static_cast<qsizetype>(version.size())));
    QApplication::setDesktopFileName(QStringLiteral("burnwick"));
    // The status item stays when the window is closed, and a click on it brings the window back.
    QApplication::setQuitOnLastWindowClosed(false);

    const burnwick::TerminationSignals signals;
    QObject::connect(&signals, &burnwick::TerminationSignals::received, &application, &QApplication::quit);
    burnwick::AppDelegate delegate;
    QObject::connect(&application, &QApplication::aboutToQuit, &application, [&] { delegate.terminate(); });
    delegate.launch();
    return QApplication::exec();
}
