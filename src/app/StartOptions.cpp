// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "app/StartOptions.h"

#include "model/Version.h"

#include <QCommandLineParser>

namespace burnwick {

namespace {

const QString helpName = QStringLiteral("help");
const QString versionName = QStringLiteral("version");
const QString actionName = QStringLiteral("action");
const QString newInstanceName = QStringLiteral("new-instance");

void addOptions(QCommandLineParser &parser) {
    // Otherwise Qt's "-reverse" would be parsed as -r, -e, -v and so on.
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.setApplicationDescription(QStringLiteral(
        "Token usage, cost and quota of Claude Code in the status bar. A second start brings the "
        "window of the first to the front."));
    // addHelpOption() and addVersionOption() need an application object, which needs a display.
    parser.addOption({{QStringLiteral("h"), helpName}, QStringLiteral("Print this help.")});
    parser.addOption({{QStringLiteral("v"), versionName}, QStringLiteral("Print the version.")});
    parser.addOption({actionName, QStringLiteral("Do this as well: settings opens the settings."),
                      QStringLiteral("name")});
    parser.addOption({newInstanceName, QStringLiteral("Run beside one that runs already.")});
}

} // namespace

std::optional<QString> informationAskedFor(const QStringList &arguments) {
    QCommandLineParser parser;
    addOptions(parser);
    // Fails for Qt's options, which do not matter here.
    parser.parse(arguments);
    if (parser.isSet(helpName))
        return parser.helpText().replace(QStringLiteral("<executable_name>"), QStringLiteral("burnwick"));
    if (parser.isSet(versionName))
        return QStringLiteral("burnwick %1\n").arg(QString::fromStdString(std::string(version())));
    return std::nullopt;
}

std::variant<StartOptions, WrongStart> parseStartOptions(const QStringList &arguments) {
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(arguments))
        return WrongStart{parser.errorText()};
    if (!parser.positionalArguments().isEmpty())
        return WrongStart{
            QStringLiteral("Unexpected argument '%1'.").arg(parser.positionalArguments().first())};
    StartOptions options;
    options.newInstance = parser.isSet(newInstanceName);
    if (!parser.isSet(actionName))
        return options;
    const QString name = parser.value(actionName);
    if (const auto action = applicationActionNamed(name.toStdString())) {
        options.action = *action;
        return options;
    }
    return WrongStart{QStringLiteral("Unknown action '%1': use settings.").arg(name)};
}

} // namespace burnwick
