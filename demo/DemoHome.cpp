// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "demo/DemoHome.h"

#include "bench/Random.h"
#include "ledger/Ledger.h"
#include "model/Timestamp.h"
#include "support/LogTreeFixture.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QString>
#include <QUrl>

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace burnwick::demo {

namespace {

using bench::Random;
using namespace std::chrono_literals;

constexpr int firstDay = 61; // days before today
struct Project {
    std::string_view logs;   ///< the folder of its logs
    std::string_view folder; ///< below the home folder
};

constexpr std::array<Project, 4> projects{{{"-home-dev-atlas", "work/atlas"},
                                           {"-home-dev-billing-api", "work/billing-api"},
                                           {"-home-dev-parser", "src/parser"},
                                           {"-home-dev-website", "clients/nordwind/2026/relaunch/website"}}};
constexpr std::string_view opus = "claude-opus-4-1-20250805";
constexpr std::string_view sonnet = "claude-sonnet-4-5-20250929";
constexpr std::string_view haiku = "claude-haiku-4-5-20251001";
constexpr std::string_view unpriced = "gateway/large-2";
/// Weighted by repetition.
constexpr std::array<std::string_view, 5> sessionModels{sonnet, sonnet, sonnet, opus, opus};
constexpr std::array<int, 14> hoursOfWork{9, 9, 10, 10, 10, 11, 13, 14, 14, 15, 15, 16, 17, 21};

class LogWriter {
public:
    LogWriter(const test::LogHome &home, Instant now)
        : m_home(home)
        , m_now(now) {}

    Random &random() { return m_random; }

    /// Adds a log with answers about a minute apart, none of them later than now.
    void addSession(Instant begin, std::uint64_t answers) {
        constexpr int unpricedSession = 20;
        const std::string_view usual = m_random.oneOf(sessionModels);
        const std::string_view model = m_sessions == unpricedSession ? unpriced : usual;
        std::vector<std::string> lines;
        Instant last{};
        for (Instant at = begin; answers > 0 && at <= m_now; --answers) {
            lines.push_back(answer(at, m_random.oneIn(6) ? haiku : model));
            last = at;
            at += std::chrono::milliseconds(15'000 + m_random.below(90'000));
        }
        if (lines.empty())
            return;
        const std::string file = "session-" + std::to_string(++m_sessions) + ".jsonl";
        const Project project = m_random.oneOf(projects);
        const std::filesystem::path folder = m_home.path() / project.folder;
        std::filesystem::create_directories(folder);
        std::string log;
        for (const std::string &line : lines)
            log += R"({"cwd":")" + folder.string() + R"(",)" + line.substr(1);
        m_home.add(std::string(project.logs) + "/" + file, log, last);
    }

private:
    std::string answer(Instant at, std::string_view model) {
        const auto count = [this](std::uint64_t least, std::uint64_t most) {
            return static_cast<long long>(m_random.skewed(least, most));
        };
        return test::usageLine(printTimestamp(at, 3), count(20, 12'000), count(90, 24'000),
                               count(500, 60'000), count(9'000, 300'000), model);
    }

    const test::LogHome &m_home;
    Instant m_now;
    Random m_random{20260201};
    int m_sessions = 0;
};

bool isWorkingDay(LocalDay day) {
    const std::chrono::weekday weekday(day);
    return weekday != std::chrono::Saturday && weekday != std::chrono::Sunday;
}

std::uint64_t sessionsOn(LocalDay day, int daysAgo, Random &random) {
    const bool onHoliday = daysAgo > 33 && daysAgo < 39;
    if (onHoliday)
        return 0;
    if (!isWorkingDay(day))
        return random.oneIn(3) ? 1 : 0;
    return 1 + random.below(4);
}

void writeJson(const std::filesystem::path &file, const QJsonObject &object) {
    test::writeFile(file, QJsonDocument(object).toJson().toStdString());
}

} // namespace

void addLogs(const test::LogHome &home, Instant now, const Calendar &calendar) {
    LogWriter writer(home, now);
    Random &random = writer.random();
    const auto local = Calendar::Cursor(calendar).localTimeOf(now);
    const auto timeOfDay = local - std::chrono::floor<std::chrono::days>(local);
    for (int daysAgo = firstDay; daysAgo >= 0; --daysAgo) {
        const Instant sameTime = calendar.daysBefore(now, daysAgo);
        for (auto left = sessionsOn(calendar.dayOf(sameTime), daysAgo, random); left > 0; --left) {
            const auto begin =
                std::chrono::hours(random.oneOf(hoursOfWork)) + std::chrono::minutes(random.below(60));
            writer.addSession(sameTime - timeOfDay + begin, 15 + random.below(60));
        }
    }
    constexpr std::uint64_t moreThanFit = 1'000;
    writer.addSession(now - 75min, moreThanFit);
}

void addSamples(const std::filesystem::path &home, const std::vector<Limit> &limits,
                const Calendar &calendar) {
    Ledger ledger(home / ".local" / "share" / "burnwick");
    Random random{20260202};
    Calendar::Cursor cursor(calendar);
    for (const Limit &limit : limits) {
        std::vector<Limit> samples;
        const std::chrono::nanoseconds length = windowLengthOf(limit.kind);
        double used = 0;
        for (Instant at = *limit.resetsAt - length; at < limit.observedAt; at += length / 100) {
            const auto local = cursor.localTimeOf(at);
            const auto timeOfDay = local - std::chrono::floor<std::chrono::days>(local);
            const bool isAtWork = length < 24h || (timeOfDay > 9h && timeOfDay < 18h);
            samples.push_back(limit);
            samples.back().observedAt = at;
            samples.back().usedPct = used;
            used += isAtWork ? static_cast<double>(random.below(1'000)) : 0;
        }
        for (Limit &sample : samples) {
            sample.usedPct *= used > 0 ? limit.usedPct / used : 0;
            static_cast<void>(ledger.recordLimits({&sample, 1}));
        }
    }
}

void addLogin(const std::filesystem::path &home) {
    constexpr qint64 year2100 = 4'102'444'800'000; // in milliseconds
    writeJson(home / ".claude" / ".credentials.json",
              {{QStringLiteral("claudeAiOauth"),
                QJsonObject{{QStringLiteral("accessToken"), QStringLiteral("demo-access")},
                            {QStringLiteral("refreshToken"), QStringLiteral("demo-refresh")},
                            {QStringLiteral("expiresAt"), year2100}}}});
}

void addSettings(const std::filesystem::path &home, const QUrl &services, const QString &theme) {
    const QString base = services.toString();
    writeJson(home / ".config" / "burnwick" / "burnwick.json",
              {{QStringLiteral("theme"), theme},
               // The answer would change the desktop of the user.
               {QStringLiteral("barExtensionAsked"), true},
               {QStringLiteral("apiBaseURL"), base},
               {QStringLiteral("statusBaseURL"), base},
               {QStringLiteral("productBaseURL"), base},
               {QStringLiteral("loginURL"), base + QStringLiteral("/login")},
               {QStringLiteral("feedbackURL"), base + QStringLiteral("/feedback")}});
}

} // namespace burnwick::demo
