// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/ReportChild.h"
#include "support/LogTreeFixture.h"
#include "support/ScriptedServer.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTemporaryDir>
#include <QtNetwork/QLocalServer>

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <iterator>

namespace burnwick {
namespace {

using test::Outcome;
using test::ScriptedAnswer;
using Ending = ScriptedAnswer::Ending;

const QByteArray usageTarget = "/api/oauth/usage";
const QByteArray tokenTarget = "/api/oauth/token";
const QByteArray statusTarget = "/api/v2/components.json";

const ScriptedAnswer usage{200, R"({"five_hour":{"utilization":62,"resets_at":"2125-06-10T15:00:00.5+00:00"},
    "seven_day":{"utilization":7},
    "extra_usage":{"is_enabled":true,"monthly_limit":5000,"used_credits":1000,"utilization":20}})"};
const ScriptedAnswer newTokens{
    200, R"({"access_token":"secret-a2","refresh_token":"secret-r2","expires_in":3600})"};
const ScriptedAnswer components{200, R"({"components":[
    {"id":"k8w3r06qmzrp","name":"API","status":"major_outage"},
    {"id":"yyzkbfz2thpt","name":"Code \u001b[31m","status":"operational"}]})"};

/// The program against a server of its own, with a login in the temporary home and without a keyring. No
/// token may show up in what it prints.
class ReportQuota : public testing::Test {
protected:
    ReportQuota() {
        configure({});
        m_program.set("XDG_CONFIG_HOME", (m_home.path() / ".config").c_str())
            .set("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
        test::writeFile(m_credentials,
                        R"({"claudeAiOauth":{"accessToken":"secret-a1","refreshToken":"secret-r1",)"
                        R"("expiresAt":4102444800000,"scopes":["x"]},"other":9007199254740993})");
        m_server.script(usageTarget, {usage});
        m_server.script(tokenTarget, {newTokens});
        m_server.script(statusTarget, {components});
    }

    void configure(const QString &more) {
        const QString server = m_server.url().toString();
        test::writeFile(
            m_settings,
            QStringLiteral(R"({"apiBaseURL":"%1","statusBaseURL":"%1"%2})").arg(server, more).toStdString());
    }
    Outcome run(const char *form, const char *locale = "C.UTF-8") {
        m_program.set("LC_ALL", locale);
        QStringList arguments{QStringLiteral("--quota")};
        if (*form != '\0')
            arguments += QLatin1String(form);
        Outcome outcome = m_program.runWhileServing(arguments);
        EXPECT_EQ(outcome.exitCode, outcome.signal == 0 ? 0 : -1);
        EXPECT_EQ((outcome.output + outcome.errors).find("secret"), std::string::npos)
            << outcome.output << outcome.errors;
        return outcome;
    }
    QJsonObject runForJson(const std::string &errors = {}) {
        const Outcome outcome = run("--json");
        EXPECT_EQ(outcome.errors, errors);
        return QJsonDocument::fromJson(QByteArray::fromStdString(outcome.output)).object();
    }
    [[nodiscard]] QJsonObject storedDocument() const {
        QFile file(QString::fromStdString(m_credentials.string()));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QJsonDocument::fromJson(file.readAll()).object();
    }

    test::ScriptedServer m_server;
    test::LogHome m_home;
    std::filesystem::path m_credentials = m_home.path() / ".claude/.credentials.json";
    std::filesystem::path m_settings = m_home.path() / ".config/burnwick/burnwick.json";
    test::Program m_program{m_home.path()};
};

TEST_F(ReportQuota, TellsWhatTheServicesSay) {
    const QJsonObject root = runForJson();
    const QJsonObject quota{
        {QStringLiteral("fiveHourUsagePct"), 62},
        {QStringLiteral("sevenDayUsagePct"), 7},
        {QStringLiteral("claudeDesignWeeklyPct"), 0},
        {QStringLiteral("fiveHourResetAt"), QStringLiteral("2125-06-10T15:00:00.500Z")},
        {QStringLiteral("sevenDayResetAt"), QJsonValue()},
        {QStringLiteral("claudeDesignResetAt"), QJsonValue()},
    };
    EXPECT_EQ(root[QStringLiteral("quota")].toObject(), quota);
    EXPECT_EQ(root[QStringLiteral("extraUsage")][QStringLiteral("currentBalance")].toDouble(), 40);
    EXPECT_EQ(root[QStringLiteral("oauthStatus")].toString(), QStringLiteral("connected"));
    EXPECT_EQ(root[QStringLiteral("statusIndicator")].toString(), QStringLiteral("orange"));
    const QJsonArray status = root[QStringLiteral("claudeStatus")].toArray();
    ASSERT_EQ(status.size(), 2);
    EXPECT_EQ(status[0][QStringLiteral("status")].toString(), QStringLiteral("operational"));
    EXPECT_EQ(status[1][QStringLiteral("name")].toString(), QStringLiteral("API"));
    EXPECT_EQ(status[1][QStringLiteral("status")].toString(), QStringLiteral("outage"));
    EXPECT_EQ(m_server.requestsFor(usageTarget).size(), 1);
    EXPECT_EQ(m_server.requestsFor(statusTarget).size(), 1);
}

TEST_F(ReportQuota, IsInEveryForm) {
    const struct {
        const char *form, *shown;
    } rows[] = {{"--title", "0 | $0.00 | s62%  ●\n"},
                {"--waybar", "\"percentage\":62"},
                {"--genmon", "5-hour window: 62% used"},
                {"", "Code \uFFFD[31m"}};
    for (const auto &row : rows) {
        for (const char *locale : {"C", "nonsense"}) {
            const Outcome outcome = run(row.form, locale);
            EXPECT_NE(outcome.output.find(row.shown), std::string::npos) << outcome.output;
            EXPECT_EQ(outcome.errors, "") << row.form << locale;
        }
    }
}

TEST_F(ReportQuota, ARejectedTokenIsRenewedAndStored) {
    m_server.script(usageTarget, {{401}, usage});
    EXPECT_EQ(runForJson()[QStringLiteral("oauthStatus")].toString(), QStringLiteral("connected"));
    ASSERT_EQ(m_server.requestsFor(usageTarget).size(), 2);
    EXPECT_EQ(m_server.requestsFor(usageTarget).back().header("Authorization"), "Bearer secret-a2");
    const QJsonObject document = storedDocument();
    const QJsonObject login = document[QStringLiteral("claudeAiOauth")].toObject();
    EXPECT_EQ(login[QStringLiteral("accessToken")].toString(), QStringLiteral("secret-a2"));
    EXPECT_EQ(login[QStringLiteral("refreshToken")].toString(), QStringLiteral("secret-r2"));
    EXPECT_EQ(login[QStringLiteral("scopes")].toArray().size(), 1);
    EXPECT_EQ(document[QStringLiteral("other")].toInteger(), 9'007'199'254'740'993);
}

TEST_F(ReportQuota, SaysInOneLineWhyThereIsNone) {
    const struct {
        std::vector<ScriptedAnswer> usage;
        ScriptedAnswer token;
        const char *reason, *oauthStatus;
    } rows[] = {
        {{{500, "secret"}}, newTokens, "Server error (HTTP 500)", "expired"},
        {{{401}}, newTokens, "OAuth token is invalid", "expired"},
        {{{401}}, {400, R"({"error":"invalid_grant"})"}, "Re-authentication required", "expired"},
        {{{401}}, {503}, "Temporary failure — will retry", "expired"},
        {{{200, "secret", {}, Ending::hangUp}},
         newTokens,
         "The connection broke before the answer was complete (RemoteHostClosedError)",
         "expired"},
    };
    for (const auto &row : rows) {
        m_server.script(usageTarget, row.usage);
        m_server.script(tokenTarget, {row.token});
        const QJsonObject root = runForJson("burnwick-report: no quota: " + std::string(row.reason) + '\n');
        EXPECT_TRUE(root[QStringLiteral("quota")].isNull());
        EXPECT_TRUE(root[QStringLiteral("extraUsage")].isNull());
        EXPECT_EQ(root[QStringLiteral("oauthStatus")].toString(), QLatin1String(row.oauthStatus));
        EXPECT_EQ(root[QStringLiteral("claudeStatus")].toArray().size(), 2);
    }
}

TEST_F(ReportQuota, AnUnreadableAnswerIsToldWithoutItsText) {
    m_server.script(usageTarget, {{200, R"({"five_hour":"secret"})"}});
    const std::string errors = run("--title").errors;
    EXPECT_TRUE(errors.starts_with("burnwick-report: no quota: ")) << errors;
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
    EXPECT_EQ(errors.find("127.0.0.1"), std::string::npos) << errors;
}

TEST_F(ReportQuota, NobodyIsAskedForAQuotaWithoutALogin) {
    std::filesystem::remove(m_credentials);
    const QJsonObject root = runForJson("burnwick-report: no quota: OAuth token not found in Keychain\n");
    EXPECT_EQ(root[QStringLiteral("oauthStatus")].toString(), QStringLiteral("disconnected"));
    EXPECT_TRUE(m_server.requestsFor(usageTarget).empty());
    EXPECT_EQ(root[QStringLiteral("claudeStatus")].toArray().size(), 2);
}

TEST_F(ReportQuota, AStatusPageThatIsDownCostsNoQuota) {
    m_server.script(statusTarget, {{200, "<html>"}});
    const QJsonObject root = runForJson();
    EXPECT_TRUE(root[QStringLiteral("claudeStatus")].isNull());
    EXPECT_EQ(root[QStringLiteral("oauthStatus")].toString(), QStringLiteral("connected"));
}

TEST_F(ReportQuota, BothAreAskedAtTheSameTime) {
    // Neither is answered before both have been asked.
    m_server.script(usageTarget, {test::held(usage)});
    m_server.script(statusTarget, {test::held(components)});
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [this] {
        if (m_server.requests().size() == 2)
            m_server.release();
    });
    poll.start(std::chrono::milliseconds(5));
    EXPECT_EQ(runForJson()[QStringLiteral("claudeStatus")].toArray().size(), 2);
}

TEST_F(ReportQuota, AnIgnoredSettingIsNamedWithoutItsValue) {
    configure(QStringLiteral(R"(,"loginURL":"http://secret.example")"));
    runForJson("burnwick-report: The setting loginURL is ignored: it is not https\n");
}

TEST_F(ReportQuota, ADamagedSettingsFileIsLeftAlone) {
    test::writeFile(m_settings, "{");
    // The addresses are the usual ones now, and nothing is to leave this machine.
    m_program.set("https_proxy", m_server.url().toEncoded().constData());
    std::filesystem::remove(m_credentials);
    EXPECT_NE(run("--json").errors.find("The settings are not read"), std::string::npos);
    EXPECT_EQ(std::filesystem::file_size(m_settings), 1);
    const std::filesystem::directory_iterator folder(m_settings.parent_path());
    EXPECT_EQ(std::distance(begin(folder), end(folder)), 1);
}

TEST_F(ReportQuota, ABusThatSaysNothingIsAskedOnlyWithoutAFileAndNotForLong) {
    const QTemporaryDir directory;
    const QString socket = directory.filePath(QStringLiteral("bus"));
    QLocalServer silence;
    ASSERT_TRUE(silence.listen(socket));
    m_program.set("DBUS_SESSION_BUS_ADDRESS", qUtf8Printable(QStringLiteral("unix:path=") + socket));
    runForJson();
    EXPECT_FALSE(silence.hasPendingConnections());
    std::filesystem::remove(m_credentials);
    runForJson("burnwick-report: no quota: OAuth token not found in Keychain\n");
    EXPECT_TRUE(silence.hasPendingConnections());
}

class ReportQuotaSignal : public ReportQuota, public testing::WithParamInterface<int> {};

TEST_P(ReportQuotaSignal, WaitsUntilRenewedTokensAreStored) {
    std::signal(GetParam(), SIG_DFL); // inherited by the program; a run without a terminal ignores some
    m_server.script(usageTarget, {{401}, usage});
    m_server.script(tokenTarget, {test::held(newTokens)});
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        if (m_server.requestsFor(tokenTarget).empty())
            return;
        poll.stop();
        ::kill(m_program.processId(), GetParam());
        m_server.release();
    });
    poll.start(std::chrono::milliseconds(5));
    EXPECT_EQ(run("--json").signal, GetParam());
    EXPECT_EQ(storedDocument()[QStringLiteral("claudeAiOauth")][QStringLiteral("refreshToken")].toString(),
              QStringLiteral("secret-r2"));
    EXPECT_EQ(m_server.requestsFor(usageTarget).size(), 1) << "it went on";
}

INSTANTIATE_TEST_SUITE_P(Ending, ReportQuotaSignal, testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST_F(ReportQuota, WithoutTheOptionNobodyIsAsked) {
    const Outcome outcome = test::Program(m_home.path())
                                .set("XDG_CONFIG_HOME", (m_home.path() / ".config").c_str())
                                .runWhileServing({QStringLiteral("--json")});
    const QJsonObject root = QJsonDocument::fromJson(QByteArray::fromStdString(outcome.output)).object();
    EXPECT_EQ(root[QStringLiteral("oauthStatus")].toString(), QStringLiteral("unknown"));
    for (const char *key : {"quota", "extraUsage", "claudeStatus"})
        EXPECT_TRUE(root.contains(QLatin1String(key)) && root[QLatin1String(key)].isNull()) << key;
    EXPECT_EQ(m_server.connectionCount(), 0);
}

} // namespace
} // namespace burnwick
