// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/StandardUpdaterController.h"
#include "platform/linux/defaults/JsonUserDefaults.h"

#include "net/HttpClient.h"
#include "prefs/SettingsFile.h"
#include "support/LogCapture.h"
#include "support/ManualClock.h"
#include "support/ManualScheduler.h"
#include "support/ScriptedServer.h"
#include "support/WaitFor.h"
#include "update/UpdateChecker.h"
#include "update/UserDriverDelegate.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::ScriptedAnswer;
using test::ScriptedServer;
using Ending = ScriptedAnswer::Ending;
using State = UpdateChecker::State;

const QByteArray target = "/appcast.xml";

QByteArray feed(const QByteArray &version) {
    return "<sparkle:shortVersionString>" + version + "</sparkle:shortVersionString>";
}

class StandardUpdaterControllerTest : public testing::Test {
protected:
    using Controller = StandardUpdaterController;

    StandardUpdaterControllerTest() { m_server.script(target, {{200, feed("999.0")}}); }

    std::unique_ptr<Controller> controllerFor(const QUrl &productBaseURL, HttpClient &http) {
        m_checker.setState(State::checking);
        return std::make_unique<Controller>(Controller::Services{http, m_defaults, m_clock, m_scheduler,
                                                                 productBaseURL, m_checker, m_userDriver});
    }
    std::unique_ptr<Controller> controller() { return controllerFor(m_server.url(), m_http); }
    /// Waits for the end of the next check and returns its state; `checking` when there is no check.
    State nextResult() {
        static_cast<void>(waitFor([this] { return m_checker.state() != State::checking; }));
        QCoreApplication::processEvents();
        const State result = m_checker.state();
        m_checker.setState(State::checking);
        return result;
    }
    void passHours(int hours) {
        for (int i = 0; i < hours; ++i) {
            m_clock.advance(1h);
            m_scheduler.advance(1h);
            QCoreApplication::processEvents();
        }
    }
    std::size_t requests() const { return m_server.requestsFor(target).size(); }

    test::SettingsFile m_file;
    JsonUserDefaults m_defaults{m_file.path};
    test::ManualClock m_clock{"2025-06-10T12:00:00.000Z"};
    test::ManualScheduler m_scheduler;
    ScriptedServer m_server;
    HttpClient m_http;
    UpdateChecker m_checker{m_scheduler};
    QStringList m_notifiedVersions;
    UserDriverDelegate m_userDriver{[] {},
                                    [this](const QString &version) { m_notifiedVersions.append(version); }};
};

TEST_F(StandardUpdaterControllerTest, ChecksOnceADayAcrossRestartsAndSleep) {
    auto running = controller();
    EXPECT_EQ(nextResult(), State::available);
    EXPECT_EQ(m_scheduler.intervals(), std::vector<std::chrono::milliseconds>{1h});
    passHours(23);
    running.reset();
    EXPECT_TRUE(m_scheduler.intervals().empty());

    running = controller();
    QCoreApplication::processEvents();
    EXPECT_EQ(requests(), 1);
    passHours(1);
    EXPECT_EQ(nextResult(), State::available);
    EXPECT_EQ(requests(), 2);

    // During sleep the clock advances, but the timer does not.
    m_clock.advance(100h);
    passHours(1);
    EXPECT_EQ(nextResult(), State::available);
    passHours(23);
    EXPECT_EQ(requests(), 3);
}

TEST_F(StandardUpdaterControllerTest, EachResponseSetsItsStateAndANewerVersionNotifies) {
    const struct {
        ScriptedAnswer answer;
        State state;
    } rows[] = {
        {{200, feed("999.0")}, State::available},
        {{500, feed("999.0")}, State::available},
        {{200, feed("0.0.2")}, State::upToDate},
        {{404, "<html>Not Found</html>"}, State::idle},
        {{200, feed("999.0"), {}, Ending::cut}, State::idle},
        {{200, feed("999.0"), {}, Ending::endless}, State::idle},
    };
    for (const auto &row : rows) {
        m_server.script(target, {row.answer});
        m_notifiedVersions.clear();
        m_clock.advance(24h);
        const auto running = controller();
        EXPECT_EQ(nextResult(), row.state) << row.answer.status;
        const bool isNewer = row.state == State::available;
        EXPECT_EQ(m_notifiedVersions, isNewer ? QStringList(QStringLiteral("999.0")) : QStringList());
    }
}

TEST_F(StandardUpdaterControllerTest, OnlyAnUnreachableServerIsRequestedAgainWithinTheHour) {
    QUrl closed;
    {
        const ScriptedServer server;
        closed = server.url();
    }
    auto running = controllerFor(closed, m_http);
    EXPECT_EQ(nextResult(), State::idle);
    passHours(1);
    EXPECT_EQ(nextResult(), State::idle);

    m_server.script(target, {{200, {}, {}, Ending::silence}});
    HttpClient impatient{{500ms}};
    running = controllerFor(m_server.url(), impatient);
    EXPECT_EQ(nextResult(), State::idle);
    passHours(23);
    EXPECT_EQ(requests(), 1);
}

TEST_F(StandardUpdaterControllerTest, ASlowCheckIsNotStartedASecondTime) {
    m_server.script(target, {test::held({200, feed("999.0")})});
    const auto running = controller();
    ASSERT_TRUE(waitFor([this] { return requests() == 1; }));
    passHours(25);
    m_server.release();
    EXPECT_EQ(nextResult(), State::available);
    EXPECT_EQ(requests(), 1);
    passHours(1);
    EXPECT_TRUE(waitFor([this] { return requests() == 2; })) << "the day counts from the response";
}

TEST_F(StandardUpdaterControllerTest, APlaceholderSiteIsNeverContacted) {
    const test::LogCapture log;
    const auto running = controllerFor(QUrl(QStringLiteral("https://burnwick.example")), m_http);
    EXPECT_TRUE(m_scheduler.intervals().empty());
    passHours(48);
    EXPECT_EQ(m_checker.state(), State::checking);
    EXPECT_TRUE(m_file.names().isEmpty());
    EXPECT_EQ(log.lines(), QStringList());
}

TEST_F(StandardUpdaterControllerTest, DestructionDuringACheckEndsItWithoutAResult) {
    auto running = controller();
    running.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_server.connectionCount(), 0);

    m_server.script(target, {{200, {}, {}, Ending::silence}});
    auto http = std::make_unique<HttpClient>();
    running = controllerFor(m_server.url(), *http);
    ASSERT_TRUE(waitFor([this] { return requests() == 1; }));
    running.reset();
    http.reset(); // ends the request
    QCoreApplication::processEvents();
    EXPECT_EQ(m_checker.state(), State::checking);
    EXPECT_TRUE(m_file.names().isEmpty()) << "the check was recorded";
}

} // namespace
} // namespace burnwick
