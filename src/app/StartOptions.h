// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ApplicationInstance.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace burnwick {

/// The options of a valid command line.
struct StartOptions {
    ApplicationAction action = ApplicationAction::showWindow;
    /// Whether to run beside a running instance, and without receiving the requests of later starts.
    bool newInstance = false;
};

/// The error in a command line.
struct WrongStart {
    QString reason; ///< one line without a line feed
};

/// Returns the output of --help or --version with its last line feed; absent without these options. The
/// program's name is the first argument; Qt's options are ignored.
[[nodiscard]] std::optional<QString> informationAskedFor(const QStringList &arguments);

/// Parses the arguments without those of Qt; the program's name is the first.
[[nodiscard]] std::variant<StartOptions, WrongStart> parseStartOptions(const QStringList &arguments);

} // namespace burnwick
