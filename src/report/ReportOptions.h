// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/TimeFilter.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <variant>

namespace burnwick {

/// The options of a valid command line.
struct ReportOptions {
    enum class Form { table, title, waybar, genmon, json, exportHistory, importHistory, version, help };

    Form form = Form::table;
    TimeFilter timeFilter = TimeFilter::all;
    bool quota = false; ///< whether to request the quota and the service's status
    QString file{};     ///< of the history; "-" is a standard stream

    bool operator==(const ReportOptions &) const = default;
};

/// The error in a command line.
struct WrongOptions {
    QString reason; ///< one line without a line feed, control characters replaced
};

/// Parses the arguments; the program's name is the first.
[[nodiscard]] std::variant<ReportOptions, WrongOptions> parseReportOptions(const QStringList &arguments);

/// Returns the output of --help: several lines, with the last line feed.
[[nodiscard]] QString reportHelp();

} // namespace burnwick
