// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ApplicationInstance.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace burnwick {

/// What the user or the desktop entry wants of the program.
struct StartOptions {
    ApplicationAction action = ApplicationAction::showWindow;
    /// To run beside one that runs already, and to be seen by no later start.
    bool newInstance = false;
};

/// Why a command line is wrong: one line without a line feed.
struct WrongStart {
    QString reason;
};

/// What --help or --version prints, with its line feed; absent when neither is among the arguments. The
/// program's name comes first; Qt's own options may be among them.
[[nodiscard]] std::optional<QString> informationAskedFor(const QStringList &arguments);

/// The arguments are those that Qt left, the program's name first.
[[nodiscard]] std::variant<StartOptions, WrongStart> parseStartOptions(const QStringList &arguments);

} // namespace burnwick
