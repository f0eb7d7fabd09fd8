// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/GenmonForm.h"
#include "forms/JsonForm.h"
#include "forms/ReportFigures.h"
#include "forms/TableForm.h"
#include "forms/TerminalText.h"
#include "forms/WaybarForm.h"
#include "model/Calendar.h"
#include "model/Clock.h"
#include "model/Version.h"
#include "platform/Process.h"
#include "report/AccountFetch.h"
#include "report/ReportOptions.h"

#include <QtCore/QFile>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include <pwd.h>
#include <unistd.h>

namespace burnwick {

namespace {

enum ExitCode { exitSuccess = 0, exitFailure = 1, exitWrongOptions = 2 };

void complain(std::string_view reason) {
    std::cerr << "burnwick-report: " << reason << '\n';
}

std::filesystem::path homeDirectory() {
    if (const char *home = std::getenv("HOME"); home != nullptr && *home != '\0')
        return home;
    const passwd *account = ::getpwuid(::getuid());
    return account != nullptr ? account->pw_dir : "/";
}

TerminalColors colorsOfStandardOutput() {
    return terminalColorsFor(::isatty(STDOUT_FILENO) == 1, std::getenv("NO_COLOR"), std::getenv("TERM"),
                             std::getenv("COLORTERM"));
}

/// For our own warnings. What Qt remarks on locales or TLS libraries is no business of the report's user.
void passOn(QtMsgType, const QMessageLogContext &context, const QString &message) {
    if (std::string_view(context.category).starts_with("burnwick."))
        complain(printableText(message.toStdString()));
}

AccountAnswer askTheServices(const Clock &clock, const Calendar &calendar) {
    qInstallMessageHandler(passOn);
    AccountAnswer answer = fetchAccount(homeDirectory(), clock, calendar);
    if (!answer.quota)
        complain("no quota: " + printableText(answer.failure));
    return answer;
}

std::string report(const ReportOptions &options) {
    using Form = ReportOptions::Form;
    if (options.form == Form::version)
        return "burnwick-report " + std::string(version()) + '\n';
    if (options.form == Form::help)
        return reportHelp().toStdString();

    const SystemClock clock;
    const Calendar calendar = Calendar::current();
    const JSONLParser parser(homeDirectory(), calendar, clock);
    std::optional<AccountAnswer> account;
    if (options.quota)
        account = askTheServices(clock, calendar);
    const auto session = [&] {
        SessionFigures figures = readSession(parser);
        if (account)
            figures.quota = account->quota;
        return figures;
    };
    const auto readAll = [&] {
        ReportFigures figures = readReport(parser, options.timeFilter, calendar.dayOf(clock.now()));
        figures.now = clock.now();
        if (account) {
            figures.session.quota = account->quota;
            figures.account = account->figures;
        }
        return figures;
    };
    switch (options.form) {
    case Form::title:
        return plainText(session().title()) + '\n';
    case Form::waybar:
        return waybarForm(session());
    case Form::genmon:
        return genmonForm(session());
    case Form::json:
        return jsonForm(readAll(), version());
    default:
        return tableForm(readAll(), colorsOfStandardOutput());
    }
}

/// Writes all of it; otherwise errno tells why not.
bool writeToStandardOutput(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(STDOUT_FILENO, text.data(), text.size());
        if (written < 0 && errno != EINTR)
            return false;
        text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
    return true;
}

int run(int argumentCount, char *arguments[]) {
    // A reader that goes away is told from the exit code and ends no shell with a signal.
    std::signal(SIGPIPE, SIG_IGN);
    QStringList decoded;
    for (int i = 0; i < argumentCount; ++i)
        decoded += QFile::decodeName(arguments[i]);
    const auto parsed = parseReportOptions(decoded);
    if (const auto *mistake = std::get_if<WrongOptions>(&parsed)) {
        complain(mistake->reason.toStdString() + " See burnwick-report --help.");
        return exitWrongOptions;
    }
    if (writeToStandardOutput(report(std::get<ReportOptions>(parsed))))
        return exitSuccess;
    const int error = errno;
    if (error != EPIPE)
        complain(std::string("cannot write: ") + std::strerror(error));
    return exitFailure;
}

} // namespace

} // namespace burnwick

int main(int argc, char *argv[]) {
    const burnwick::platform::ProcessScope process;
    try {
        return burnwick::run(argc, argv);
    } catch (const std::exception &error) {
        burnwick::complain(error.what());
        return burnwick::exitFailure;
    }
}
