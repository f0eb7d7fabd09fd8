// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/TimeFilter.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <variant>

namespace burnwick {

/// What the command line asks for.
struct ReportOptions {
    enum class Form { table, title, waybar, genmon, json, version, help };

    Form form = Form::table;
    TimeFilter timeFilter = TimeFilter::all;
    bool quota = false; ///< whether to ask for the quota and the service's status

    bool operator==(const ReportOptions &) const = default;
};

/// Why a command line is wrong: one line without a line feed, its control characters replaced.
struct WrongOptions {
    QString reason;
};

/// Reads the arguments, the program's name first.
[[nodiscard]] std::variant<ReportOptions, WrongOptions> parseReportOptions(const QStringList &arguments);

/// What --help prints: every option with its meaning, several lines.
[[nodiscard]] QString reportHelp();

} // namespace burnwick
