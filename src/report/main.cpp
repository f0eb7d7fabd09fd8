// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "display/StatusTitle.h"
#include "forms/BarForms.h"
#include "forms/JsonForm.h"
#include "forms/TableForm.h"
#include "forms/TerminalText.h"
#include "model/Clock.h"
#include "model/Version.h"
#include "platform/Process.h"
#include "report/AccountFetch.h"
#include "report/ReportOptions.h"
#include "state/LogFigures.h"

#include <QtCore/QFile>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <iostream>
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

/// Prints our own warnings. Qt's remarks on locales and TLS libraries do not concern the report's user.
void passOn(QtMsgType type, const QMessageLogContext &context, const QString &message) {
    if (type != QtInfoMsg && std::string_view(context.category).starts_with("burnwick."))
        complain(printableText(message.toStdString()));
}

AccountFigures fetchAccountOrComplain(const Clock &clock, const Calendar &calendar) {
    qInstallMessageHandler(passOn);
    AccountFigures account = fetchAccount(homeDirectory(), clock, calendar);
    if (!account.quotaData)
        complain("no quota: " + printableText(account.quotaFailure));
    return account;
}

/// Reads all logs if the form shows the history, otherwise the recent ones only.
Snapshot readSnapshot(const ReportOptions &options, bool withHistory, const Clock &clock) {
    Snapshot snapshot{{Calendar::current(), options.timeFilter}, {}};
    auto &[usage, account] = snapshot;
    const JSONLParser parser(homeDirectory());
    if (options.quota)
        account = fetchAccountOrComplain(clock, usage.calendar);
    const Instant now = clock.now();
    if (withHistory) {
        const auto history = parser.parseAllEntries();
        updateSession(usage, history->entriesSince(recentSince(usage.calendar, now)), now);
        updateHistory(usage, *history, now);
    } else {
        updateSession(usage, parser.parseRecentEntries(recentSince(usage.calendar, now))->entries, now);
    }
    return snapshot;
}

std::string report(const ReportOptions &options) {
    using Form = ReportOptions::Form;
    const SystemClock clock;
    switch (options.form) {
    case Form::version:
        return "burnwick-report " + std::string(version()) + '\n';
    case Form::help:
        return reportHelp().toStdString();
    case Form::title:
        return plainText(buildStatusTitle(readSnapshot(options, false, clock))) + '\n';
    case Form::waybar:
        return waybarForm(readSnapshot(options, false, clock));
    case Form::genmon:
        return genmonForm(readSnapshot(options, false, clock));
    case Form::json:
        return jsonForm(readSnapshot(options, true, clock), version());
    case Form::table:
        break;
    }
    const Snapshot snapshot = readSnapshot(options, true, clock); // which may take a while
    return tableForm(snapshot, clock.now(), colorsOfStandardOutput());
}

/// Writes all of it; returns false and sets errno on failure.
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
