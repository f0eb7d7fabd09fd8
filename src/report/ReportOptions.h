// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/FigureChoice.h"
#include "model/TimeFilter.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace burnwick {

/// The options of a valid command line.
struct ReportOptions {
    enum class Form {
        table,
        title,
        waybar,
        genmon,
        json,
        projects,
        models,
        days,
        metrics,
        metricsFile,
        exportHistory,
        importHistory,
        statusLine,
        statusLineSetup,
        version,
        help
    };

    Form form = Form::table;
    TimeFilter timeFilter = TimeFilter::all;
    bool quota = false;                    ///< whether to request the quota and the service's status
    QString file{};                        ///< of history or metrics; "-" is a standard stream of the history
    std::vector<std::string> command{};    ///< of the status line: a program and its arguments; may be empty
    std::optional<FigureChoice> figures{}; ///< null for the user's preference
    std::vector<std::filesystem::path> logs{}; ///< the folders to read instead of the user's; may be empty
    enum class Projects { none, hashed, plain };
    Projects metricsProjects = Projects::none; ///< the projects' labels in the metrics
    bool isCsv = false;                        ///< whether to print projects, models or days as CSV

    [[nodiscard]] bool isBreakdown() const {
        return form == Form::projects || form == Form::models || form == Form::days;
    }
    [[nodiscard]] bool isMetrics() const { return form == Form::metrics || form == Form::metricsFile; }
    /// Whether the form can be of other logs than the user's.
    [[nodiscard]] bool mayReadOtherLogs() const {
        return form != Form::exportHistory && form != Form::importHistory && form != Form::statusLine &&
               form != Form::statusLineSetup;
    }
    bool operator==(const ReportOptions &) const = default;
};

/// The error in a command line.
struct WrongOptions {
    QString reason; ///< one line without a line feed, control characters replaced
};

/// Parses the arguments; the program's name is the first. Those behind "--" are a command in any encoding.
[[nodiscard]] std::variant<ReportOptions, WrongOptions>
parseReportOptions(const std::vector<std::string> &arguments);

/// Returns the output of --help: several lines, with the last line feed.
[[nodiscard]] QString reportHelp();

} // namespace burnwick
