// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT

// The main function of test programs that need an application object: offscreen, in an empty home, on a
// private session bus. With BURNWICK_TESTS_WITHOUT_BUS it starts no bus: after Qt has started a process, the
// thread sanitizer no longer sees the main thread's locks.

#include "platform/Process.h"
#include "support/PrivateBus.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

#include <cstdio>

namespace burnwick {

namespace {

PrivateBus *testsBus = nullptr;

void moveHomeTo(const QTemporaryDir &home) {
    const auto point = [&home](const char *variable, const QString &folder) {
        qputenv(variable, home.filePath(folder).toUtf8());
    };
    qputenv("HOME", home.path().toUtf8());
    point("XDG_CONFIG_HOME", QStringLiteral(".config"));
    point("XDG_DATA_HOME", QStringLiteral(".local/share"));
    point("XDG_STATE_HOME", QStringLiteral(".local/state"));
    point("XDG_CACHE_HOME", QStringLiteral(".cache"));
    qunsetenv("CLAUDE_CONFIG_DIR");
    // A runtime directory must be private to its owner, as a directory of mkdtemp() is.
    qputenv("XDG_RUNTIME_DIR", home.path().toUtf8());
}

/// The default offscreen screen is smaller than common ones, and windows are limited to their screen.
void useCommonScreens(const QTemporaryDir &home) {
    const QString path = home.filePath(QStringLiteral("screen.json"));
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(R"({"screens": [{"name": "common", "x": 0, "y": 0, "width": 1920, "height": 1080,
                               "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1},
                              {"name": "low", "x": 1920, "y": 0, "width": 1280, "height": 680,
                               "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1},
                              {"name": "very low", "x": 3200, "y": 0, "width": 1280, "height": 540,
                               "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + path.toUtf8());
}

} // namespace

PrivateBus &sessionBusOfTests() {
    return *testsBus;
}

} // namespace burnwick

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();

    // A look-up of a proxy may still run at the end, and must use nothing that is destroyed.
    const burnwick::platform::ProcessScope process;
    const QTemporaryDir home;
    if (!home.isValid()) {
        std::fputs("cannot make a temporary home\n", stderr);
        return 1;
    }
    burnwick::moveHomeTo(home);
    burnwick::useCommonScreens(home);
#ifdef BURNWICK_TESTS_WITHOUT_BUS
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
#else
    burnwick::PrivateBus bus;
    if (bus.address().isEmpty()) {
        std::fputs("cannot start a message bus\n", stderr);
        return 1;
    }
    bus.becomeSessionBus();
    burnwick::testsBus = &bus;
#endif

    const QApplication application(argc, argv);
    return process.end(RUN_ALL_TESTS());
}
