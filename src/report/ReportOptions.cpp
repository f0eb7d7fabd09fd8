// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/ReportOptions.h"

#include "forms/TerminalText.h"

#include <QtCore/QCommandLineParser>

#include <algorithm>
#include <optional>

namespace burnwick {

namespace {

using Form = ReportOptions::Form;

struct FormOption {
    Form form;
    QString name;
    QString description;
    QString value{}; ///< the name of its value, if it has one
};

const FormOption outputOptions[] = {
    {Form::title, QStringLiteral("title"), QStringLiteral("Print the status title as plain text.")},
    {Form::waybar, QStringLiteral("waybar"),
     QStringLiteral("Print one line of JSON for a custom module of waybar.")},
    {Form::genmon, QStringLiteral("genmon"),
     QStringLiteral("Print the status title for Xfce's generic monitor.")},
    {Form::json, QStringLiteral("json"), QStringLiteral("Print all the figures as JSON.")},
    {Form::projects, QStringLiteral("projects"), QStringLiteral("Print the use and cost of each project.")},
    {Form::models, QStringLiteral("models"), QStringLiteral("Print the use and cost of each model.")},
    {Form::days, QStringLiteral("days"), QStringLiteral("Print the use and cost of each day.")},
    {Form::metrics, QStringLiteral("metrics"),
     QStringLiteral("Print exact use, cost and limits as metrics for Prometheus.")},
    {Form::metricsFile, QStringLiteral("metrics-file"),
     QStringLiteral("Write them to a file for node_exporter, as a whole."), QStringLiteral("file")},
    {Form::exportHistory, QStringLiteral("export-history"),
     QStringLiteral("Write each message's usage to a CSV file (- for standard output)."),
     QStringLiteral("file")},
    {Form::importHistory, QStringLiteral("import-history"),
     QStringLiteral("Keep the messages of such a file (- for standard input) that are not known yet. "
                    "Requires the setting \"Keep history\"."),
     QStringLiteral("file")},
    {Form::statusLine, QStringLiteral("statusline"),
     QStringLiteral(
         "Answer as the command of Claude Code's status line: read its JSON, keep the limits in it, "
         "and print the title in colours, or what the command behind -- prints.")},
    {Form::statusLineSetup, QStringLiteral("statusline-setup"),
     QStringLiteral("Print what to add to Claude Code's settings for this; change nothing.")},
};

const QString filterName = QStringLiteral("filter");
const QString figuresName = QStringLiteral("figures");
const QString csvName = QStringLiteral("csv");
const QString metricsProjectsName = QStringLiteral("metrics-projects");
const QString logsName = QStringLiteral("logs");
const QString quotaName = QStringLiteral("quota");
const QString helpName = QStringLiteral("help");
const QString versionName = QStringLiteral("version");

void addOptions(QCommandLineParser &parser) {
    parser.setApplicationDescription(
        QStringLiteral("Token usage and cost of Claude Code, from the session logs that it writes."));
    // Not addHelpOption(): its --help-all lists options of graphical programs.
    parser.addOption({{QStringLiteral("h"), helpName}, QStringLiteral("Print this help.")});
    parser.addOption({{QStringLiteral("v"), versionName}, QStringLiteral("Print the version.")});
    QCommandLineOption filter(filterName, QStringLiteral("Period of the history: all, 30d or 7d."),
                              QStringLiteral("period"), QStringLiteral("all"));
    parser.addOption(filter);
    parser.addOption({figuresName,
                      QStringLiteral("How to count: logged (each line) or exact (each message once, at its "
                                     "model's price). Without this option: as in the settings."),
                      QStringLiteral("choice")});
    parser.addOption(
        {quotaName, QStringLiteral("Ask for the account's quota and the service's status, too.")});
    parser.addOption({logsName,
                      QStringLiteral("Read the logs in this folder, at any depth, instead of the usual ones. "
                                     "May be given several times. Keeps nothing of them."),
                      QStringLiteral("folder")});
    parser.addOption({metricsProjectsName,
                      QStringLiteral("With metrics: count each project apart, named by a hash with a key of "
                                     "this machine, or by its path (=plain)."),
                      QStringLiteral("=plain")});
    parser.addOption({csvName, QStringLiteral("Print projects, models or days as CSV.")});
    for (const FormOption &option : outputOptions)
        parser.addOption({option.name, option.description, option.value});
    parser.addPositionalArgument(QStringLiteral("command"),
                                 QStringLiteral("With --statusline: another command of the status line, with "
                                                "its arguments. It gets the same input."),
                                 QStringLiteral("[-- command...]"));
}

std::optional<ReportOptions::Projects> projectsNamed(const QString &name) {
    using Projects = ReportOptions::Projects;
    if (name == QStringLiteral("plain"))
        return Projects::plain;
    return name == QStringLiteral("hashed") ? std::optional(Projects::hashed) : std::nullopt;
}

std::optional<TimeFilter> filterNamed(const QString &name) {
    for (const TimeFilter filter : allTimeFilters) {
        if (name == QString::fromStdString(std::string(nameOf(filter))).toLower())
            return filter;
    }
    return std::nullopt;
}

std::optional<FigureChoice> figuresNamed(const QString &name) {
    if (name == QStringLiteral("logged"))
        return FigureChoice::asLogged;
    if (name == QStringLiteral("exact"))
        return FigureChoice::exact;
    return std::nullopt;
}

WrongOptions wrong(const QString &reason) {
    return {QString::fromStdString(printableText(reason.toStdString()))};
}

WrongOptions unexpected(const QString &argument) {
    return wrong(QStringLiteral("Unexpected argument '%1'.").arg(argument));
}

} // namespace

std::variant<ReportOptions, WrongOptions> parseReportOptions(const std::vector<std::string> &arguments) {
    const auto separator = std::ranges::find(arguments, "--");
    QStringList decoded;
    for (auto argument = arguments.begin(); argument != separator; ++argument)
        // The parser knows no options with an optional value.
        decoded += QString::fromStdString(*argument == "--metrics-projects" ? "--metrics-projects=hashed"
                                                                            : *argument);
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(decoded))
        return wrong(parser.errorText());
    if (!parser.positionalArguments().isEmpty())
        return unexpected(parser.positionalArguments().first());

    ReportOptions options;
    const auto filter = filterNamed(parser.value(filterName));
    if (!filter)
        return wrong(
            QStringLiteral("Unknown period '%1': use all, 30d or 7d.").arg(parser.value(filterName)));
    options.timeFilter = *filter;
    options.quota = parser.isSet(quotaName);
    if (parser.isSet(figuresName)) {
        options.figures = figuresNamed(parser.value(figuresName));
        if (!options.figures)
            return wrong(
                QStringLiteral("Unknown figures '%1': use logged or exact.").arg(parser.value(figuresName)));
    }

    QStringList chosen;
    for (const FormOption &option : outputOptions) {
        if (!parser.isSet(option.name))
            continue;
        chosen += QStringLiteral("--") + option.name;
        options.form = option.form;
        options.file = option.value.isEmpty() ? QString() : parser.value(option.name);
        const bool isFile =
            !options.file.isEmpty() && (options.file == u'-' || !options.file.startsWith(u'-'));
        if (!option.value.isEmpty() && (!isFile || parser.values(option.name).size() > 1))
            return wrong(QStringLiteral("%1 needs one file.").arg(chosen.last()));
    }
    if (chosen.size() > 1)
        return wrong(QStringLiteral("Only one of %1 at a time.").arg(chosen.join(QStringLiteral(", "))));
    options.isCsv = parser.isSet(csvName);
    if (options.isCsv && !options.isBreakdown())
        return wrong(QStringLiteral("--csv needs --projects, --models or --days."));
    if (options.form == Form::metricsFile && options.file == u'-')
        return wrong(QStringLiteral("--metrics-file needs a file; --metrics prints."));
    if (parser.isSet(metricsProjectsName)) {
        const auto projects = projectsNamed(parser.value(metricsProjectsName));
        if (!projects || !options.isMetrics())
            return wrong(projects ? QStringLiteral("--metrics-projects needs --metrics or --metrics-file.")
                                  : QStringLiteral("Unknown value '%1' of --metrics-projects: use plain.")
                                        .arg(parser.value(metricsProjectsName)));
        options.metricsProjects = *projects;
    }
    for (const QString &folder : parser.values(logsName)) {
        if (folder.isEmpty())
            return wrong(QStringLiteral("--logs needs a folder."));
        options.logs.emplace_back(folder.toStdString());
    }
    if (!options.logs.empty() && !options.mayReadOtherLogs())
        return wrong(QStringLiteral("--logs does not go with %1.").arg(chosen.join(QString())));
    if (parser.isSet(versionName))
        options.form = Form::version;
    if (parser.isSet(helpName))
        options.form = Form::help;
    if (separator != arguments.end())
        options.command.assign(separator + 1, arguments.end());
    if (!options.command.empty() && options.form != Form::statusLine)
        return unexpected(QString::fromStdString(options.command.front()));
    return options;
}

QString reportHelp() {
    QCommandLineParser parser;
    addOptions(parser);
    // The parser gets the program's name from the application object, which the help does not need otherwise.
    // It knows no options with an optional value.
    return parser.helpText()
        .replace(QStringLiteral("<executable_name>"), QStringLiteral("burnwick-report"))
        .replace(QStringLiteral("--metrics-projects <=plain>"),
                 QStringLiteral("--metrics-projects[=plain] "));
}

} // namespace burnwick
