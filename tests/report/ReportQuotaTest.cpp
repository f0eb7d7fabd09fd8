// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/ReportChild.h"
#include "support/JsonMembers.h"
#include "support/LogTreeFixture.h"
#include "support/ScriptedServer.h"

#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>
#include <QtNetwork/QLocalServer>

#include <gtest/gtest.h>

#include <csignal>

namespace burnwick {
namespace {

using test::expectMembers;
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

/// The program with a scripted server and a login in a temporary home, without a keyring. Its output contains
/// no token.
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
        return test::jsonObject(outcome.output);
    }

    test::ScriptedServer m_server;
    test::LogHome m_home;
    std::filesystem::path m_credentials = m_home.path() / ".claude/.credentials.json";
    std::filesystem::path m_settings = m_home.path() / ".config/burnwick/burnwick.json";
    test::Program m_program{m_home.path()};
};

TEST_F(ReportQuota, IsInEveryFormInAnyLocale) {
    const struct {
        const char *form, *locale, *shown;
    } rows[] = {{"--title", "C", "0 | $0.00 | s62%  ●\n"},
                {"--waybar", "nonsense", "\"percentage\":62"},
                {"--genmon", "C", "5-hour window: 62% used"},
                {"", "nonsense", "Code \uFFFD[31m"}};
    for (const auto &row : rows) {
        const Outcome outcome = run(row.form, row.locale);
        EXPECT_NE(outcome.output.find(row.shown), std::string::npos) << outcome.output;
        EXPECT_EQ(outcome.errors, "") << row.form;
    }
}

TEST_F(ReportQuota, PrintsTheReasonOfAFailureInOneLine) {
    // The tests of the tracker cover which failure has which outcome.
    const struct {
        ScriptedAnswer usage;
        const char *reason;
    } rows[] = {
        {{500, "secret"}, "Server error (HTTP 500)"},
        {{200, "secret", {}, Ending::hangUp},
         "The connection broke before the answer was complete (RemoteHostClosedError)"},
        {{200, R"({"five_hour":"secret"})"}, ""},
    };
    m_server.script(statusTarget, {{200, "<html>"}});
    for (const auto &row : rows) {
        m_server.script(usageTarget, {row.usage});
        const Outcome outcome = run("--json");
        EXPECT_TRUE(outcome.errors.starts_with(std::string("burnwick-report: no quota: ") + row.reason))
            << outcome.errors;
        EXPECT_EQ(outcome.errors.find('\n'), outcome.errors.size() - 1) << outcome.errors;
        EXPECT_EQ(outcome.errors.find("127.0.0.1"), std::string::npos) << outcome.errors;
        expectMembers(
            test::jsonObject(outcome.output),
            R"({"quota": null, "extraUsage": null, "oauthStatus": "expired", "claudeStatus": null})");
    }
}

TEST_F(ReportQuota, QuotaAndStatusAreRequestedConcurrently) {
    // The server answers after both requests.
    m_server.script(usageTarget, {test::held(usage)});
    m_server.script(statusTarget, {test::held(components)});
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [this] {
        if (m_server.requests().size() == 2)
            m_server.release();
    });
    poll.start(std::chrono::milliseconds(5));
    expectMembers(runForJson(), R"({"claudeStatus": [{}, {}]})");
}

TEST_F(ReportQuota, AnIgnoredSettingIsNamedWithoutItsValue) {
    configure(QStringLiteral(R"(,"loginURL":"http://secret.example")"));
    runForJson("burnwick-report: The setting loginURL is ignored: it is not https\n");
}

TEST_F(ReportQuota, ADamagedSettingsFileIsLeftAlone) {
    test::writeFile(m_settings, "{");
    // The addresses are the vendor's now: the proxy keeps all requests on this machine.
    m_program.set("https_proxy", m_server.url().toEncoded().constData());
    std::filesystem::remove(m_credentials);
    EXPECT_NE(run("--json").errors.find("The settings are not read"), std::string::npos);
    EXPECT_EQ(std::filesystem::file_size(m_settings), 1);
    EXPECT_EQ(test::entriesOf(m_settings.parent_path()), 1);
}

TEST_F(ReportQuota, ASilentBusIsConnectedOnlyWithoutAFileAndDelaysForALimitedTime) {
    const QTemporaryDir directory;
    const QString socket = directory.filePath(QStringLiteral("bus"));
    QLocalServer silence;
    ASSERT_TRUE(silence.listen(socket));
    m_program.set("DBUS_SESSION_BUS_ADDRESS", qUtf8Printable(QStringLiteral("unix:path=") + socket));
    runForJson();
    EXPECT_FALSE(silence.hasPendingConnections());
    std::filesystem::remove(m_credentials);
    const auto before = m_server.requestsFor(usageTarget).size();
    expectMembers(runForJson("burnwick-report: no quota: OAuth token not found in Keychain\n"),
                  R"({"oauthStatus": "disconnected", "claudeStatus": [{}, {}]})");
    EXPECT_TRUE(silence.hasPendingConnections());
    EXPECT_EQ(m_server.requestsFor(usageTarget).size(), before);
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
    expectMembers(test::jsonObject(test::bytesOf(m_credentials)),
                  R"({"claudeAiOauth": {"refreshToken": "secret-r2"}})");
    EXPECT_EQ(m_server.requestsFor(usageTarget).size(), 1) << "it continued";
}

INSTANTIATE_TEST_SUITE_P(Ending, ReportQuotaSignal, testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST_F(ReportQuota, WithoutTheOptionThereIsNoRequest) {
    const Outcome outcome = test::Program(m_home.path())
                                .set("XDG_CONFIG_HOME", (m_home.path() / ".config").c_str())
                                .runWhileServing({QStringLiteral("--json")});
    expectMembers(test::jsonObject(outcome.output),
                  R"({"oauthStatus": "unknown", "quota": null, "extraUsage": null, "claudeStatus": null})");
    EXPECT_EQ(m_server.connectionCount(), 0);
}

} // namespace
} // namespace burnwick
