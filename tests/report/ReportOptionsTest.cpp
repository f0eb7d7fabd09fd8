// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/ReportOptions.h"

#include <gtest/gtest.h>

#include <sstream>

namespace burnwick {
namespace {

using Form = ReportOptions::Form;

auto parse(const char *arguments) {
    std::vector<std::string> list{"burnwick-report"};
    std::istringstream words(arguments);
    for (std::string word; std::getline(words, word, ' ');)
        list.push_back(word);
    return parseReportOptions(list);
}

TEST(ReportOptionsTest, ReadsTheCommandLine) {
    const struct {
        const char *arguments;
        ReportOptions options;
    } rows[] = {
        {"", {Form::table, TimeFilter::all}},
        {"--filter 7d", {Form::table, TimeFilter::sevenDays}},
        {"--filter=30d --json", {Form::json, TimeFilter::thirtyDays}},
        {"--title", {Form::title, TimeFilter::all}},
        {"--genmon", {Form::genmon, TimeFilter::all}},
        {"--waybar --quota", {Form::waybar, TimeFilter::all, true}},
        {"--export-history=f --filter 7d",
         {Form::exportHistory, TimeFilter::sevenDays, false, QStringLiteral("f")}},
        {"--import-history -", {Form::importHistory, TimeFilter::all, false, QStringLiteral("-")}},
        {"--statusline --", {Form::statusLine, TimeFilter::all}},
        {"--statusline -- sh --json -- x",
         {Form::statusLine, TimeFilter::all, false, {}, {"sh", "--json", "--", "x"}}},
        {"--statusline-setup", {Form::statusLineSetup, TimeFilter::all}},
        {"--projects --filter 7d", {Form::projects, TimeFilter::sevenDays}},
        {"--models --figures logged", {Form::models, TimeFilter::all, false, {}, {}, FigureChoice::asLogged}},
        {"--csv --days --figures=exact",
         {Form::days, TimeFilter::all, false, {}, {}, FigureChoice::exact, {}, {}, true}},
        {"--metrics --metrics-projects --",
         {Form::metrics, TimeFilter::all, false, {}, {}, {}, {}, ReportOptions::Projects::hashed}},
        {"--metrics-projects=plain --metrics-file f",
         {Form::metricsFile,
          TimeFilter::all,
          false,
          QStringLiteral("f"),
          {},
          {},
          {},
          ReportOptions::Projects::plain}},
        {"--logs a --title --logs=/b", {Form::title, TimeFilter::all, false, {}, {}, {}, {"a", "/b"}}},
        {"--", {Form::table, TimeFilter::all}},
        {"-v", {Form::version, TimeFilter::all}},
        {"--json --help", {Form::help, TimeFilter::all}},
        {"-h", {Form::help, TimeFilter::all}},
    };
    for (const auto &row : rows) {
        const auto parsed = parse(row.arguments);
        ASSERT_TRUE(std::holds_alternative<ReportOptions>(parsed)) << row.arguments;
        EXPECT_EQ(std::get<ReportOptions>(parsed), row.options) << row.arguments;
    }
}

TEST(ReportOptionsTest, RefusesWhatItDoesNotKnowAndNamesIt) {
    const std::pair<const char *, const char *> rows[] = {
        {"--nonsense", "nonsense"},
        {"--filter", "filter"},
        {"--filter 8d", "8d"},
        {"--json=1", "json"},
        {"logs", "logs"},
        {"--json --title", "--title, --json"},
        {"--figures", "figures"},
        {"--figures Exact", "'Exact': use logged or exact"},
        {"--csv", "--csv needs --projects, --models or --days"},
        {"--csv --json", "--csv needs"},
        {"--models --days", "--models, --days"},
        {"--export-history", "export-history"},
        {"--title --import-history f", "--title, --import-history"},
        {"--export-history f --import-history f", "--export-history, --import-history"},
        {"--metrics-file", "metrics-file"},
        {"--metrics-file -", "--metrics-file needs a file"},
        {"--json --metrics-projects", "--metrics-projects needs --metrics"},
        {"--metrics --metrics-projects=names", "'names' of --metrics-projects: use plain"},
        {"--metrics --metrics-file f", "--metrics, --metrics-file"},
        {"--logs", "logs"},
        {"--logs=", "--logs needs a folder"},
        {"--logs a --statusline", "--logs does not go with --statusline"},
        {"--export-history f --logs a", "--logs does not go with --export-history"},
        {"--json -- sh", "sh"},
        {"--statusline sh", "sh"},
        {"--bad\n\033[2J", "bad\uFFFD\uFFFD[2J"},
    };
    for (const auto &[arguments, named] : rows) {
        const auto parsed = parse(arguments);
        ASSERT_TRUE(std::holds_alternative<WrongOptions>(parsed)) << arguments;
        const QString reason = std::get<WrongOptions>(parsed).reason;
        EXPECT_TRUE(reason.contains(QString::fromUtf8(named))) << reason.toStdString();
    }
}

} // namespace
} // namespace burnwick
