// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/PrivateBus.h"
#include "support/VirtualDisplay.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QTemporaryDir>

#include <filesystem>
#include <stdexcept>

namespace burnwick::bench {

/// A home with its own settings: unreachable services, and the defaults otherwise.
class Settings {
public:
    Settings() {
        QFile file(m_directory.filePath(QStringLiteral("burnwick/burnwick.json")));
        if (!QDir(m_directory.path()).mkdir(QStringLiteral("burnwick")) || !file.open(QIODevice::WriteOnly))
            throw std::runtime_error("cannot write settings");
        file.write(R"({"apiBaseURL":"http://127.0.0.1:9","statusBaseURL":"http://127.0.0.1:9"})");
    }
    [[nodiscard]] QString path() const { return m_directory.path(); }

private:
    QTemporaryDir m_directory;
};

/// A desktop of the benchmark's own: a screen, a message bus and a status area.
struct Desktop {
    Desktop() {
        if (display.name().isEmpty() || bus.address().isEmpty())
            throw std::runtime_error("cannot start an X server and a message bus");
        bus.becomeSessionBus();
    }

    [[nodiscard]] QProcessEnvironment environment(const std::filesystem::path &home) const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), QString::fromStdString(home.string()));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), settings.path());
        environment.insert(QStringLiteral("XDG_DATA_HOME"), settings.path());
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), settings.path());
        environment.insert(QStringLiteral("DISPLAY"), display.name());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
        environment.remove(QStringLiteral("CLAUDE_CONFIG_DIR"));
        return environment;
    }

    Settings settings;
    test::VirtualDisplay display;
    PrivateBus bus;
};

} // namespace burnwick::bench
