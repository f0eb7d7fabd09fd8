// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "breakdown/UsageCells.h"
#include "display/StatusTitle.h"
#include "forecast/Forecast.h"
#include "forms/BarForms.h"
#include "forms/BreakdownCsv.h"
#include "forms/BreakdownTable.h"
#include "forms/JsonForm.h"
#include "forms/TableForm.h"
#include "forms/TerminalText.h"
#include "ledger/Ledger.h"
#include "model/Clock.h"
#include "model/Version.h"
#include "platform/Platform.h"
#include "platform/Process.h"
#include "platform/UserDefaults.h"
#include "prefs/Settings.h"
#include "report/AccountFetch.h"
#include "report/HistoryFile.h"
#include "report/MetricsReport.h"
#include "report/ReportFolders.h"
#include "report/ReportOptions.h"
#include "report/StatusLine.h"
#include "report/StatusLineSetup.h"
#include "state/LimitCourses.h"
#include "state/LogFigures.h"
#include "statusline/LatestLimits.h"

#include <QtCore/QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <future>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <unistd.h>

namespace burnwick {

namespace {

using Form = ReportOptions::Form;

enum ExitCode { exitSuccess = 0, exitFailure = 1, exitWrongOptions = 2 };

TerminalColors colorsOfStandardOutput() {
    return terminalColorsFor(::isatty(STDOUT_FILENO) == 1, std::getenv("NO_COLOR"), std::getenv("TERM"),
                             std::getenv("COLORTERM"));
}

/// Prints our own warnings. Qt's messages on locales and TLS libraries do not concern the report's user.
void printWarning(QtMsgType type, const QMessageLogContext &context, const QString &message) {
    if (type != QtInfoMsg && std::string_view(context.category).starts_with("burnwick."))
        complain(printableText(message.toStdString()));
}

std::unique_ptr<UserDefaults> userDefaults() {
    return platform::makeUserDefaults(UserDefaults::Access::readOnly);
}

FigureChoice figuresOf(const ReportOptions &options, const UserDefaults &defaults) {
    return options.figures ? *options.figures : load(defaults, settings::figures);
}

/// Sets the latest observations of the account's limits, and their courses. `history` has the recent files at
/// least.
void addLimits(Snapshot &snapshot, Ledger &ledger, const LogHistory &history, bool isWholeHistory,
               Instant now) {
    auto &[usage, account] = snapshot;
    auto limits = ledger.lastLimits(now);
    mergeLimits(limits, LatestLimits(Ledger::userFolder()).read(now));
    mergeLimits(limits, account.limits);
    account.limits = std::move(limits);
    if (account.limits.empty())
        return;
    auto &courses = usage.limitCourses;
    courses = coursesOf(account.limits, ledger.recordLimits(account.limits), {});
    // The recent files lack the use of windows of seven days.
    const auto end = isWholeHistory ? courses.end() : std::ranges::find_if(courses, [](const auto &course) {
        return course.limit.kind != Limit::Kind::session;
    });
    std::vector<LimitCourse> covered(courses.begin(), end);
    static_cast<void>(addTokens(covered, history, nullptr));
    std::ranges::move(covered, courses.begin());
    if (account.quotaData)
        return;
    account.quotaReadAt = std::ranges::max(account.limits, {}, &Limit::observedAt).observedAt;
    account.isQuotaStale = now - *account.quotaReadAt > staleLimitAge;
}

/// Reads all logs if the form shows the history, otherwise the recent ones only, and sets the cells of
/// metrics. May take a while.
Snapshot readSnapshot(const ReportOptions &options, const Clock &clock, std::vector<UsageCell> &cells) {
    Snapshot snapshot{{Calendar::current(), options.timeFilter}, {}};
    auto &[usage, account] = snapshot;
    const auto defaults = userDefaults();
    usage.figureChoice = figuresOf(options, *defaults);
    if (options.quota && !options.isBreakdown()) {
        account = fetchAccount([&defaults] { return configurationFoldersOf(userFolders(*defaults)); },
                               *defaults, clock, usage.calendar);
        if (!account.quotaData)
            complain("no quota: " + printableText(account.quotaFailure));
    }
    const JSONLParser parser(foldersToRead(options, *defaults));
    Ledger ledger(Ledger::userFolder());
    ledger.setKeepsHistory(load(*defaults, settings::keepHistory));
    Ledger *const store = options.logs.empty() ? &ledger : nullptr;
    const Instant now = clock.now();
    const bool isWholeHistory = options.form == Form::table || options.form == Form::json ||
                                options.isBreakdown() || options.isMetrics();
    if (!isWholeHistory && usage.figureChoice == FigureChoice::asLogged)
        ledger.omitMessages();
    const Instant since = recentSince(usage.calendar, now);
    const auto history =
        isWholeHistory ? parser.parseAllEntries(nullptr, store) : parser.parseRecentEntries(since, store);
    ExactCounting counting(PriceTable::ofUser());
    updateSession(usage, isWholeHistory ? history->entriesSince(since) : std::span(history->entries),
                  counting, now);
    if (isWholeHistory) {
        auto sums = std::async([&, calendar = usage.calendar] { return HistorySums(*history, calendar); });
        const auto exactSums = counting.sums(*history, usage.calendar);
        updateHistory(usage, sums.get(), *exactSums, now);
        if (options.isMetrics())
            cells = usageCells(*exactSums, options.metricsProjects != ReportOptions::Projects::none,
                               singlySince(now));
    }
    if (options.form != Form::title && !options.isBreakdown())
        addLimits(snapshot, ledger, *history, isWholeHistory, now);
    return snapshot;
}

/// Exports or imports the history after the logs were read. Throws std::runtime_error.
std::string exchangeHistory(const ReportOptions &options) {
    const bool isImport = options.form == Form::importHistory;
    const auto defaults = userDefaults();
    const bool keeps = load(*defaults, settings::keepHistory);
    if (isImport && !keeps)
        throw std::runtime_error("nothing is imported: turn on \"Keep history\" in Settings first, or set "
                                 "\"keepHistory\" to true in the settings file");
    Ledger ledger(Ledger::userFolder());
    ledger.setKeepsHistory(keeps);
    static_cast<void>(JSONLParser(foldersToRead(options, *defaults)).parseAllEntries(nullptr, &ledger));
    return isImport ? importHistory(ledger, options.file) : exportHistory(ledger, options.file);
}

/// Throws std::runtime_error.
std::string metricsTextOf(const ReportOptions &options, const Snapshot &snapshot,
                          std::vector<UsageCell> cells) {
    // Named folders have no kept history.
    const bool areCounters = options.logs.empty() && load(*userDefaults(), settings::keepHistory);
    return metricsText(options, snapshot, std::move(cells), areCounters, Ledger::userFolder());
}

TitleSources titleSources(const ReportOptions &options) {
    const auto cache =
        QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation).toStdString() + "/burnwick";
    const auto defaults = userDefaults();
    const FigureChoice figures = figuresOf(options, *defaults);
    return {logFoldersOf(userFolders(*defaults)), Ledger::userFolder(),
            load(*defaults, settings::keepHistory), figures,
            cache + (figures == FigureChoice::exact ? "/title-exact.json" : "/title.json")};
}

/// The shell finds a program without a slash in its name again; of others the path is needed.
std::string statusLineSnippet(const std::filesystem::path &program) {
    const auto setup =
        statusLineSetup(homeDirectory() / ".claude" / "settings.json",
                        program.has_parent_path() ? std::filesystem::absolute(program) : program);
    std::cerr << setup.advice << '\n';
    return setup.snippet;
}

std::string report(const ReportOptions &options, const std::string &programName) {
    if (options.form == Form::version)
        return "burnwick-report " + std::string(version()) + '\n';
    if (options.form == Form::help)
        return reportHelp().toStdString();
    if (options.form == Form::exportHistory && options.file == u'-') {
        std::cerr << exchangeHistory(options);
        return {};
    }
    if (options.form == Form::exportHistory || options.form == Form::importHistory)
        return exchangeHistory(options);
    if (options.form == Form::statusLineSetup)
        return statusLineSnippet(programName);
    const SystemClock clock;
    std::vector<UsageCell> cells;
    const Snapshot snapshot = readSnapshot(options, clock, cells);
    const UsageFigures &usage = snapshot.usage;
    const TerminalColors colors = colorsOfStandardOutput();
    switch (options.form) {
    case Form::title:
        return plainText(buildStatusTitle(snapshot)) + '\n';
    case Form::waybar:
        return waybarForm(snapshot, clock.now());
    case Form::genmon:
        return genmonForm(snapshot, clock.now());
    case Form::metrics:
        return metricsTextOf(options, snapshot, std::move(cells));
    case Form::metricsFile: {
        const MetricsFileTurn turn(options.file);
        writeMetricsFile(options.file, metricsTextOf(options, snapshot, std::move(cells)));
        return {};
    }
    case Form::json:
        return jsonForm(snapshot, version(), clock.now());
    case Form::projects:
        return options.isCsv ? projectsCsv(usage) : projectsTable(usage, homeDirectory(), colors);
    case Form::models:
        return options.isCsv ? modelsCsv(usage) : modelsTable(usage, colors);
    case Form::days:
        return options.isCsv ? daysCsv(usage) : daysTable(usage, colors);
    default:
        return tableForm(snapshot, clock.now(), colors);
    }
}

/// Writes the whole text; returns false and sets errno on failure.
bool writeToStandardOutput(std::string_view text) {
    return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
}

int run(int argumentCount, char *arguments[]) {
    // Without a reader the exit code reports the failure, and no signal ends the process.
    std::signal(SIGPIPE, SIG_IGN);
    qInstallMessageHandler(printWarning);
    const std::vector<std::string> texts(arguments, arguments + argumentCount);
    const auto parsed = parseReportOptions(texts);
    if (const auto *mistake = std::get_if<WrongOptions>(&parsed)) {
        complain(mistake->reason.toStdString() + " See burnwick-report --help.");
        return exitWrongOptions;
    }
    const auto &options = std::get<ReportOptions>(parsed);
    if (options.form == Form::statusLine) {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        return runStatusLine(titleSources(options), options.command, SystemClock());
    }
    if (writeToStandardOutput(report(options, texts.empty() ? "burnwick-report" : texts.front())))
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
        return process.end(burnwick::run(argc, argv));
    } catch (const std::exception &error) {
        burnwick::complain(error.what());
        return process.end(burnwick::exitFailure);
    }
}
