// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ApplicationInstance.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace burnwick {

/// Why a command line is wrong: one line without a line feed.
struct WrongStart {
    QString reason;
};

/// What --help or --version prints, with its line feed; absent when neither is among the arguments. The
/// program's name comes first; Qt's own options may be among them.
[[nodiscard]] std::optional<QString> informationAskedFor(const QStringList &arguments);

/// What the user or the desktop entry wants of the program. The arguments are those that Qt left, the
/// program's name first.
[[nodiscard]] std::variant<ApplicationAction, WrongStart> parseStartOptions(const QStringList &arguments);

} // namespace burnwick
