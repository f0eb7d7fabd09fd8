// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/instance/BusApplicationInstance.h"
#include "support/EnvironmentVariable.h"
#include "support/FakeApplication.h"
#include "support/PrivateBus.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QtDBus/QDBusPendingCall>

#include <optional>

namespace burnwick {
namespace {

using namespace std::chrono_literals;

// Simultaneous starts, the request handed over and a first instance that hangs: see SingleInstanceTest.

/// Claims and returns the outcome; absent without an answer.
std::optional<InstanceClaim> claim(BusApplicationInstance &instance, const ApplicationRequest &request = {}) {
    std::optional<InstanceClaim> outcome;
    instance.claim(request, [&](InstanceClaim answer) { outcome = answer; });
    EXPECT_FALSE(outcome) << "answered before the call returned";
    static_cast<void>(waitFor([&] { return outcome.has_value(); }));
    return outcome;
}

TEST(ApplicationInstance, BecomesTheInstanceWhenTheFirstOneEnds) {
    const FakeApplication ending(FakeApplication::Conduct::leaves);
    BusApplicationInstance instance;
    EXPECT_EQ(claim(instance), InstanceClaim::first);
    EXPECT_EQ(ending.requests().size(), 1);
}

TEST(ApplicationInstance, ABusThatHangsLeavesTheOutcomeUnknown) {
    BusApplicationInstance instance(100ms);
    sessionBusOfTests().freeze();
    EXPECT_EQ(claim(instance), InstanceClaim::unknown);
    sessionBusOfTests().thaw();
}

TEST(ApplicationInstance, ForwardsTheDesktopsRequests) {
    const QVariantMap none;
    const QVariantMap both{{QStringLiteral("activation-token"), QStringLiteral("token")},
                           {QStringLiteral("desktop-startup-id"), QStringLiteral("id")},
                           {QStringLiteral("other"), 5}};
    const QVariantMap strange{{QStringLiteral("activation-token"), QVariantMap{{QStringLiteral("x"), 1}}}};
    const struct {
        const char *method;
        QVariantList arguments;
        std::optional<ApplicationRequest> request;
    } rows[] = {
        {"Activate", {none}, ApplicationRequest{}},
        {"Activate", {both}, ApplicationRequest{{}, {"token", "id"}}},
        {"Activate", {strange}, ApplicationRequest{}},
        {"Open", {QStringList(QStringLiteral("file:///x")), both}, ApplicationRequest{{}, {"token", "id"}}},
        {"ActivateAction",
         {QStringLiteral("settings"), QVariantList(), both},
         ApplicationRequest{ApplicationAction::showSettings, {"token", "id"}}},
        {"ActivateAction", {QStringLiteral("quit"), QVariantList(), both}, std::nullopt},
    };
    BusApplicationInstance first;
    std::vector<ApplicationRequest> requests;
    first.setRequestHandler([&](const ApplicationRequest &request) { requests.push_back(request); });
    ASSERT_EQ(claim(first), InstanceClaim::first);
    const QString peerName = QStringLiteral("desktop");
    const QDBusConnection peer = sessionBusOfTests().connect(peerName);
    for (const auto &row : rows) {
        requests.clear();
        QDBusMessage call = QDBusMessage::createMethodCall(applicationBusName(), applicationObjectPath(),
                                                           QStringLiteral("org.freedesktop.Application"),
                                                           QLatin1String(row.method));
        call.setArguments(row.arguments);
        const QDBusPendingCall pending = peer.asyncCall(call);
        ASSERT_TRUE(waitFor([&] { return pending.isFinished(); }));
        EXPECT_FALSE(pending.isError()) << pending.error().message().toStdString();
        EXPECT_EQ(requests, row.request ? std::vector{*row.request} : std::vector<ApplicationRequest>())
            << row.method;
    }
    QDBusConnection::disconnectFromBus(peerName);
}

TEST(ApplicationInstance, TheHandlerGetsEarlierRequests) {
    BusApplicationInstance first;
    ASSERT_EQ(claim(first), InstanceClaim::first);
    BusApplicationInstance second;
    const ApplicationRequest request{ApplicationAction::showWindow, {"token", {}}};
    ASSERT_EQ(claim(second, request), InstanceClaim::handedOver);
    std::vector<ApplicationRequest> requests;
    first.setRequestHandler([&](const ApplicationRequest &early) { requests.push_back(early); });
    EXPECT_EQ(requests, std::vector{request});
}

TEST(StartupActivation, IsReadAndThenRemovedFromTheEnvironment) {
    const test::EnvironmentVariable token("XDG_ACTIVATION_TOKEN", "token");
    const test::EnvironmentVariable startup("DESKTOP_STARTUP_ID", "id_TIME5");
    const auto start = platform::makeApplicationStartup();
    ASSERT_EQ(start->prepare(), std::nullopt);
    EXPECT_EQ(start->begin(), (StartupActivation{"token", "id_TIME5"}));
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("DESKTOP_STARTUP_ID"));
}

} // namespace
} // namespace burnwick
