// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/instance/BusApplicationInstance.h"
#include "support/EnvironmentVariable.h"
#include "support/FakeApplication.h"
#include "support/PrivateBus.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCall>

#include <optional>

namespace burnwick {
namespace {

using namespace std::chrono_literals;

// Several starts at once, what they hand over and a first one that hangs are seen by the whole program's
// tests.

/// A start of the program with this token; with what became of it and what it was asked later.
struct Start {
    explicit Start(const std::string &token = {}, const BusApplicationInstance::Limits &limits = {})
        : instance(limits)
        , request{ApplicationAction::showWindow, {token, {}}} {
        instance.setRequestHandler([this](const ApplicationRequest &later) { asked.push_back(later); });
    }
    /// Absent when there is no answer.
    std::optional<InstanceClaim> outcomeOfClaim() {
        instance.claim(request, [this](InstanceClaim answer) { outcome = answer; });
        EXPECT_FALSE(outcome) << "answered before the call returned";
        static_cast<void>(waitFor([this] { return outcome.has_value(); }));
        return outcome;
    }

    BusApplicationInstance instance;
    ApplicationRequest request;
    std::optional<InstanceClaim> outcome;
    std::vector<ApplicationRequest> asked;
};

TEST(ApplicationInstance, TakesThePlaceOfOneThatEndsMeanwhile) {
    const FakeApplication ending(FakeApplication::Conduct::leaves);
    Start start;
    EXPECT_EQ(start.outcomeOfClaim(), InstanceClaim::first);
    EXPECT_EQ(ending.requests().size(), 1);
}

TEST(ApplicationInstance, DoesNotWaitForABusThatHangs) {
    Start start("", {.claim = 100ms, .handOver = 5s});
    sessionBusOfTests().freeze();
    EXPECT_EQ(start.outcomeOfClaim(), InstanceClaim::unknown);
    sessionBusOfTests().thaw();
}

TEST(ApplicationInstance, PassesOnWhatTheDesktopAsks) {
    struct Case {
        QString method;
        QVariantList arguments;
        std::optional<ApplicationRequest> request;
    };
    const QVariantMap none;
    const QVariantMap both{{QStringLiteral("activation-token"), QStringLiteral("token")},
                           {QStringLiteral("desktop-startup-id"), QStringLiteral("id")},
                           {QStringLiteral("other"), 5}};
    const QVariantMap strange{{QStringLiteral("activation-token"), QVariantMap{{QStringLiteral("x"), 1}}}};
    const auto settings = QStringLiteral("settings");
    const Case cases[] = {
        {QStringLiteral("Activate"), {none}, ApplicationRequest{}},
        {QStringLiteral("Activate"), {both}, ApplicationRequest{{}, {"token", "id"}}},
        {QStringLiteral("Activate"), {strange}, ApplicationRequest{}},
        {QStringLiteral("Open"),
         {QStringList(QStringLiteral("file:///etc/passwd")), both},
         ApplicationRequest{{}, {"token", "id"}}},
        {QStringLiteral("ActivateAction"),
         {settings, QVariantList(), both},
         ApplicationRequest{ApplicationAction::showSettings, {"token", "id"}}},
        {QStringLiteral("ActivateAction"), {QStringLiteral("quit"), QVariantList(), both}, std::nullopt},
    };
    Start first;
    ASSERT_EQ(first.outcomeOfClaim(), InstanceClaim::first);
    const QString peerName = QStringLiteral("desktop");
    const QDBusConnection peer = sessionBusOfTests().connect(peerName);
    for (const Case &c : cases) {
        first.asked.clear();
        QDBusMessage call =
            QDBusMessage::createMethodCall(applicationBusName(), applicationObjectPath(),
                                           QStringLiteral("org.freedesktop.Application"), c.method);
        call.setArguments(c.arguments);
        const QDBusPendingCall pending = peer.asyncCall(call);
        ASSERT_TRUE(waitFor([&] { return pending.isFinished(); }));
        EXPECT_FALSE(pending.isError()) << pending.error().message().toStdString();
        EXPECT_EQ(first.asked, c.request ? std::vector{*c.request} : std::vector<ApplicationRequest>())
            << c.method.toStdString();
    }
    QDBusConnection::disconnectFromBus(peerName);
}

TEST(ApplicationInstance, KeepsWhatIsAskedBeforeAnyoneHandlesIt) {
    BusApplicationInstance first;
    std::optional<InstanceClaim> outcome;
    first.claim({}, [&](InstanceClaim answer) { outcome = answer; });
    ASSERT_TRUE(waitFor([&] { return outcome.has_value(); }));
    Start second("token");
    ASSERT_EQ(second.outcomeOfClaim(), InstanceClaim::handedOver);

    std::vector<ApplicationRequest> asked;
    first.setRequestHandler([&](const ApplicationRequest &request) { asked.push_back(request); });
    EXPECT_EQ(asked, std::vector{second.request});
}

TEST(StartupActivation, IsReadAndThenKeptFromChildren) {
    const test::EnvironmentVariable token("XDG_ACTIVATION_TOKEN", "token");
    const test::EnvironmentVariable startup("DESKTOP_STARTUP_ID", "id_TIME5");
    EXPECT_EQ(platform::startupActivation(), (StartupActivation{"token", "id_TIME5"}));
    platform::forgetStartupActivation();
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("DESKTOP_STARTUP_ID"));
    EXPECT_EQ(platform::startupActivation(), StartupActivation{});
}

} // namespace
} // namespace burnwick
