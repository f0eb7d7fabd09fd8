// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "forms/TableForm.h"

#include <QtCore/QXmlStreamReader>

#include <gtest/gtest.h>

#include <regex>
#include <sstream>
#include <string>
#include <vector>

/// Snapshots and checks that the tests of the forms share.
namespace burnwick::test {

inline const Instant now = Instant(std::chrono::hours(1'000));

inline Snapshot emptySnapshot() {
    return {{Calendar::inZone("UTC")}, {}};
}

inline Snapshot someFigures() {
    using namespace std::chrono_literals;
    Snapshot snapshot = emptySnapshot();
    UsageFigures &usage = snapshot.usage;
    usage.hasJSONLData = true;
    usage.sessionTokens = {300, 200'000, 10, 4'000};
    usage.sessionCost = 0.1 + 0.2; // has no short decimal
    usage.burnRateTokensPerMin = 225;
    usage.projectedTodayCost = 2.916;
    usage.projectedWeeklyCost = 20.412;
    usage.projectedMonthlyCost = 87.48;
    usage.timeFilter = TimeFilter::thirtyDays;
    HistoricalData &history = usage.historicalData;
    history.sessionCount = 3;
    history.totalTokens = {9'007'199'254'740'993, 1, 2, 3}; // more than a double counts exactly
    history.dailyActivity = {{std::chrono::local_days(1970y / 2 / 9), 5},
                             {std::chrono::local_days(1970y / 2 / 10), 0}};
    history.modelStats = {{"claude-opus-4-5", 1100, 550, 82.5}, {"x\n\033[2J\u009b1m", 350, 0, 17.5}};
    return snapshot;
}

inline Snapshot someFiguresWithAccount() {
    using namespace std::chrono_literals;
    Snapshot snapshot = someFigures();
    AccountFigures &account = snapshot.account;
    account.oauthStatus = OAuthStatus::connected;
    account.quotaData = QuotaData{62.4, 100.6, 0.2, now + 125min, {}, now - 1h};
    account.extraUsage = ExtraUsageData{10, 50.004, 40, 20, 20};
    account.claudeStatus = {{"Claude Code", ClaudeComponentStatus::Status::degraded},
                            {"API\n\033[2J\u009b", ClaudeComponentStatus::Status::unknown}};
    account.claudeStatusReadAt = now;
    return snapshot;
}

inline std::string tableOf(const Snapshot &snapshot, TerminalColors colors = TerminalColors::none) {
    return tableForm(snapshot, now, colors);
}

inline std::vector<std::string> linesOf(const std::string &text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// The text that the markup shows; fails the test when it is not well-formed.
inline std::string withoutMarkup(const QString &markup) {
    QXmlStreamReader reader(QStringLiteral("<all>") + markup + QStringLiteral("</all>"));
    QString text;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::Characters)
            text += reader.text();
    }
    EXPECT_FALSE(reader.hasError()) << markup.toStdString();
    return text.toStdString();
}

/// Each of the expressions matches somewhere in the text.
inline void expectMatches(const std::string &text, const std::vector<const char *> &patterns) {
    for (const char *pattern : patterns)
        EXPECT_TRUE(std::regex_search(text, std::regex(pattern))) << pattern << '\n' << text;
}

} // namespace burnwick::test
