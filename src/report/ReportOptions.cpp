// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/ReportOptions.h"

#include "forms/TerminalText.h"

#include <QtCore/QCommandLineParser>

#include <algorithm>
#include <array>
#include <optional>

namespace burnwick {

namespace {

using Form = ReportOptions::Form;

struct FormOption {
    Form form;
    const char16_t *name;
    const char16_t *description;
};

constexpr std::array<FormOption, 4> outputOptions{{
    {Form::title, u"title", u"Print the status title as plain text."},
    {Form::waybar, u"waybar", u"Print one line of JSON for a custom module of waybar."},
    {Form::genmon, u"genmon", u"Print the status title for Xfce's generic monitor."},
    {Form::json, u"json", u"Print all the figures as JSON."},
}};

const QString filterName = QStringLiteral("filter");
const QString quotaName = QStringLiteral("quota");
const QString helpName = QStringLiteral("help");
const QString versionName = QStringLiteral("version");

QString nameOf(const FormOption &option) {
    return QString::fromUtf16(option.name);
}

void addOptions(QCommandLineParser &parser) {
    parser.setApplicationDescription(
        QStringLiteral("Token usage and cost of Claude Code, from its session logs in ~/.claude/projects."));
    // Not addHelpOption(): its --help-all lists options of graphical programs.
    parser.addOption({{QStringLiteral("h"), helpName}, QStringLiteral("Print this help.")});
    parser.addOption({{QStringLiteral("v"), versionName}, QStringLiteral("Print the version.")});
    QCommandLineOption filter(filterName, QStringLiteral("Period of the history: all, 30d or 7d."),
                              QStringLiteral("period"), QStringLiteral("all"));
    parser.addOption(filter);
    parser.addOption(
        {quotaName, QStringLiteral("Ask for the account's quota and the service's status, too.")});
    for (const FormOption &option : outputOptions)
        parser.addOption({nameOf(option), QString::fromUtf16(option.description)});
}

std::optional<TimeFilter> filterNamed(const QString &name) {
    const auto found = std::find_if(allTimeFilters.begin(), allTimeFilters.end(), [&name](TimeFilter filter) {
        const std::string_view text = burnwick::nameOf(filter);
        return name == QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toLower();
    });
    return found != allTimeFilters.end() ? std::optional(*found) : std::nullopt;
}

WrongOptions wrong(const QString &reason) {
    return {QString::fromStdString(printableText(reason.toStdString()))};
}

} // namespace

std::variant<ReportOptions, WrongOptions> parseReportOptions(const QStringList &arguments) {
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(arguments))
        return wrong(parser.errorText());
    if (!parser.positionalArguments().isEmpty())
        return wrong(QStringLiteral("Unexpected argument '%1'.").arg(parser.positionalArguments().first()));

    ReportOptions options;
    const auto filter = filterNamed(parser.value(filterName));
    if (!filter)
        return wrong(
            QStringLiteral("Unknown period '%1': use all, 30d or 7d.").arg(parser.value(filterName)));
    options.timeFilter = *filter;
    options.quota = parser.isSet(quotaName);

    QStringList chosen;
    for (const FormOption &option : outputOptions) {
        if (!parser.isSet(nameOf(option)))
            continue;
        chosen += QStringLiteral("--") + nameOf(option);
        options.form = option.form;
    }
    if (chosen.size() > 1)
        return wrong(QStringLiteral("Only one of %1 at a time.").arg(chosen.join(QStringLiteral(", "))));
    if (parser.isSet(versionName))
        options.form = Form::version;
    if (parser.isSet(helpName))
        options.form = Form::help;
    return options;
}

QString reportHelp() {
    QCommandLineParser parser;
    addOptions(parser);
    // The parser knows the program's name only from an application object, which costs a start-up of its own.
    return parser.helpText().replace(QStringLiteral("<executable_name>"), QStringLiteral("burnwick-report"));
}

} // namespace burnwick
