// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/StatusLineSetup.h"

#include "forms/OrderedJson.h"
#include "forms/TerminalText.h"
#include "json/JsonFile.h"
#include "json/JsonReading.h"

#include <stdexcept>
#include <string_view>
#include <system_error>

namespace burnwick {

namespace {

constexpr QLatin1String statusLineKey("statusLine");
constexpr QLatin1String typeKey("type");
constexpr QLatin1String commandKey("command");

/// As one word of a shell's command line.
std::string shellQuoted(std::string_view text) {
    constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_./";
    if (!text.empty() && text.find_first_not_of(plain) == std::string_view::npos)
        return std::string(text);
    std::string word = "'";
    for (const char character : text)
        word += character == '\'' ? std::string("'\\''") : std::string(1, character);
    return word + "'";
}

bool isOurs(const QString &command) {
    return command.contains(QLatin1String("burnwick-report --statusline")) ||
           command.contains(QLatin1String("burnwick-report' --statusline"));
}

QJsonObject settingsIn(const std::filesystem::path &file) {
    std::error_code error;
    if (std::filesystem::symlink_status(file, error).type() == std::filesystem::file_type::not_found)
        return {};
    return parseJsonObject(jsonFileBytes(file));
}

} // namespace

StatusLineSetup statusLineSetup(const std::filesystem::path &settings, const std::string &program) {
    const std::string name = printableText(settings.string());
    QJsonObject statusLine;
    try {
        statusLine = settingsIn(settings).value(statusLineKey).toObject();
    } catch (const DecodeError &error) {
        throw std::runtime_error("cannot read " + name + ": " + error.what());
    }
    const bool isSet = !statusLine.isEmpty();
    QString command = statusLine.value(commandKey).toString();
    const bool isDone = isOurs(command);
    if (!isDone) {
        const std::string wrapped =
            command.trimmed().isEmpty() ? "" : " -- sh -c " + shellQuoted(command.toStdString());
        command = QString::fromStdString(shellQuoted(program) + " --statusline" + wrapped);
    }
    OrderedJson object = OrderedJson::object();
    object.add("type", std::string_view("command")).add("command", command.toStdString());
    for (auto member = statusLine.constBegin(); member != statusLine.constEnd(); ++member) {
        if (member.key() != typeKey && member.key() != commandKey)
            object.add(member.key().toStdString(), member.value());
    }
    const std::string advice = isDone  ? name + " has this already:"
                               : isSet ? "Replace \"statusLine\" in " + name + " by this:"
                                       : "Add this to " + name + ":";
    return {advice, OrderedJson::object().add("statusLine", object).toJson().toStdString() + '\n'};
}

} // namespace burnwick
