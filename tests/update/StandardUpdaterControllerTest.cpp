// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/StandardUpdaterController.h"

#include "net/HttpClient.h"
#include "prefs/SettingsFile.h"
#include "prefs/UserDefaults.h"
#include "support/LogCapture.h"
#include "support/ManualClock.h"
#include "support/ManualScheduler.h"
#include "support/ScriptedServer.h"
#include "support/WaitFor.h"
#include "update/DailyCheck.h"
#include "update/UpdaterDelegate.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QMutex>

#include <thread>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::ScriptedAnswer;
using test::ScriptedServer;
using Ending = ScriptedAnswer::Ending;

const QByteArray target = "/appcast.xml";

QByteArray feed(const QByteArray &version) {
    return "<rss><channel><item><sparkle:shortVersionString>0.0.1</sparkle:shortVersionString></item>"
           "<item><sparkle:shortVersionString>" +
           version + "</sparkle:shortVersionString></item></channel></rss>";
}

/// Writes down what it is told, and from which thread.
class RecordingDelegate final : public UpdaterDelegate {
public:
    void updaterDidNotFindUpdate() override { add(QStringLiteral("none")); }
    void updaterDidNotFindUpdate(const QString &reason) override { add(QStringLiteral("none: ") + reason); }
    void updaterDidFindValidUpdate(const AppcastItem &item) override {
        add(QStringLiteral("found ") + item.displayVersionString);
    }
    void updaterDidAbort(const QString &error) override { add(QStringLiteral("aborted: ") + error); }

    [[nodiscard]] QStringList calls() const {
        const QMutexLocker locker(&m_mutex);
        return m_calls;
    }
    [[nodiscard]] bool calledFrom(std::thread::id thread) const {
        const QMutexLocker locker(&m_mutex);
        return std::ranges::find(m_threads, thread) != m_threads.end();
    }

private:
    void add(const QString &call) {
        const QMutexLocker locker(&m_mutex);
        m_calls.append(call);
        m_threads.push_back(std::this_thread::get_id());
    }

    mutable QMutex m_mutex;
    QStringList m_calls;
    std::vector<std::thread::id> m_threads;
};

class StandardUpdaterControllerTest : public testing::Test {
protected:
    using Controller = StandardUpdaterController;

    StandardUpdaterControllerTest() { m_server.script(target, {{200, feed("999.0")}}); }

    std::unique_ptr<Controller> controllerFor(const QUrl &productBaseURL, HttpClient &http) {
        return std::make_unique<Controller>(Controller::Services{
            http, m_defaults, m_clock, m_scheduler, productBaseURL, m_delegate, m_userDriver,
            [this](const QString &version) { m_events.append(QStringLiteral("shown ") + version); }});
    }
    std::unique_ptr<Controller> controller() { return controllerFor(m_server.url(), m_http); }
    bool delegateHeard(qsizetype calls) {
        const bool heard = waitFor([=, this] { return m_delegate.calls().size() >= calls; });
        QCoreApplication::processEvents();
        return heard;
    }
    void passHours(int hours) {
        for (int i = 0; i < hours; ++i) {
            m_clock.advance(1h);
            m_scheduler.advance(1h);
            QCoreApplication::processEvents();
        }
    }
    qsizetype requests() const { return static_cast<qsizetype>(m_server.requestsFor(target).size()); }

    test::SettingsFile m_file;
    UserDefaults m_defaults{m_file.path};
    test::ManualClock m_clock{"2025-06-10T12:00:00.000Z"};
    test::ManualScheduler m_scheduler;
    ScriptedServer m_server;
    HttpClient m_http;
    RecordingDelegate m_delegate;
    QStringList m_events;
    UserDriverDelegate m_userDriver{
        [this] { m_events.append(QStringLiteral("activated")); },
        [this](const QString &version) { m_events.append(QStringLiteral("notified ") + version); }};
};

// That a scheduled check posts one notification is seen by the whole program's tests.

TEST_F(StandardUpdaterControllerTest, ACheckTheUserStartedBringsTheProgramForwardInstead) {
    const QStringList expected{QStringLiteral("activated"), QStringLiteral("shown 999.0")};
    const auto running = controller();
    running->checkForUpdates();
    running->checkForUpdates();
    ASSERT_TRUE(waitFor([&] { return m_events.size() >= 2; }));
    passHours(2);
    EXPECT_EQ(m_events, expected);
    EXPECT_EQ(requests(), 1);

    // One that was started by itself becomes the user's.
    m_server.script(target, {test::held({200, feed("999.0")})});
    m_events.clear();
    passHours(23);
    ASSERT_TRUE(waitFor([this] { return requests() == 2; }));
    running->checkForUpdates();
    m_server.release();
    ASSERT_TRUE(waitFor([&] { return m_events.size() >= 2; }));
    EXPECT_EQ(m_events, expected);
}

TEST_F(StandardUpdaterControllerTest, ACheckADayAlsoAcrossRestarts) {
    auto running = controller();
    ASSERT_TRUE(delegateHeard(1));
    EXPECT_EQ(m_scheduler.intervals(), std::vector<std::chrono::milliseconds>{1h});
    passHours(23);
    running.reset();
    EXPECT_TRUE(m_scheduler.intervals().empty());

    running = controller();
    QCoreApplication::processEvents();
    EXPECT_EQ(requests(), 1);
    passHours(1);
    ASSERT_TRUE(delegateHeard(2));
    EXPECT_EQ(requests(), 2);

    // The machine slept: the timer stood still, the clock did not.
    m_clock.advance(100h);
    passHours(1);
    ASSERT_TRUE(delegateHeard(3));
    passHours(23);
    EXPECT_EQ(requests(), 3);
}

TEST_F(StandardUpdaterControllerTest, EachAnswerIsToldAsWhatItIs) {
    const struct {
        ScriptedAnswer answer;
        const char *told;
    } rows[] = {
        {{200, feed("999.0")}, "found 999.0"},
        {{200, feed("0.0.2")}, "none"},
        {{200, "<rss><channel/></rss>"}, "none: "},
        {{200, feed("../<b>999.0</b>")}, "none"},
        {{404, feed("999.0")}, "aborted: HTTP status 404"},
        {{200, feed("999.0").chopped(1)}, "aborted: "},
        {{200, feed("999.0"), {}, Ending::cut}, "aborted: "},
    };
    const auto running = controller();
    ASSERT_TRUE(delegateHeard(1));
    for (const auto &row : rows) {
        const qsizetype before = m_delegate.calls().size();
        m_server.script(target, {row.answer});
        passHours(24);
        ASSERT_TRUE(delegateHeard(before + 1));
        EXPECT_TRUE(m_delegate.calls().last().startsWith(QString::fromUtf8(row.told)))
            << m_delegate.calls().last().toStdString() << " for " << row.told;
        EXPECT_EQ(m_delegate.calls().size(), before + 1);
    }
    EXPECT_FALSE(m_delegate.calledFrom(std::this_thread::get_id()));
}

TEST_F(StandardUpdaterControllerTest, OnlyACheckThatReachedNobodyIsTriedAgainSoon) {
    QUrl nobody;
    {
        const ScriptedServer gone;
        nobody = gone.url();
    }
    auto running = controllerFor(nobody, m_http);
    ASSERT_TRUE(delegateHeard(1));
    passHours(1);
    ASSERT_TRUE(delegateHeard(2));

    m_server.script(target, {{200, {}, {}, Ending::silence}});
    HttpClient hasty{{500ms}};
    running = controllerFor(m_server.url(), hasty);
    ASSERT_TRUE(waitFor([this] { return requests() == 1; }));
    ASSERT_TRUE(delegateHeard(3));
    EXPECT_FALSE(DailyCheck(m_defaults, m_clock).takeTurn());
}

TEST_F(StandardUpdaterControllerTest, APlaceholderIsNeverAsked) {
    const test::LogCapture log;
    const auto running = controllerFor(QUrl(QStringLiteral("https://burnwick.example")), m_http);
    EXPECT_TRUE(m_scheduler.intervals().empty());
    passHours(48);
    EXPECT_TRUE(m_delegate.calls().isEmpty());
    EXPECT_TRUE(m_file.names().isEmpty());
    EXPECT_EQ(log.lines(), QStringList());
}

TEST_F(StandardUpdaterControllerTest, MayGoAtAnyTime) {
    m_server.script(target, {test::held({200, feed("999.0")})});
    auto running = controller();
    running.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_server.connectionCount(), 0);

    running = controller();
    ASSERT_TRUE(waitFor([this] { return requests() == 1; }));
    running.reset();
    m_server.release();
    // The client closes the exchange, whoever waits for it.
    HttpClient other;
    m_server.script("/other", {{200, {}}});
    const auto task = other.send({HttpMethod::get, m_server.url(QStringLiteral("/other"))});
    ASSERT_TRUE(waitFor([&] { return task.isReady(); }));
    EXPECT_TRUE(m_delegate.calls().isEmpty());

    // While the delegate is being told.
    m_server.script(target, {{200, feed("999.0")}});
    for (int i = 0; i < 20; ++i) {
        m_clock.advance(24h);
        running = controller();
        ASSERT_TRUE(delegateHeard(i + 1));
        running.reset();
    }
}

} // namespace
} // namespace burnwick
