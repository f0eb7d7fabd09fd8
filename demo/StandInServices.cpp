// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "demo/StandInServices.h"

#include "model/Timestamp.h"
#include "model/Version.h"
#include "quota/OAuthUsageResponse.h"
#include "support/ScriptedServer.h"
#include "update/ReleaseAddresses.h"

#include <QVersionNumber>

namespace burnwick::demo {

namespace {

using namespace std::chrono_literals;

std::string instantText(Instant instant) {
    return printTimestamp(instant, 0);
}

OAuthUsageResponse usage(Instant now) {
    // Later by half a minute, so that a program that has just started shows 2 h 5 min.
    const Instant seen = now + 30s;
    const OAuthUsagePeriod session{67, instantText(seen + 2h + 5min)};
    const OAuthUsagePeriod weekly{31, instantText(seen + 3 * 24h + 14h)};
    const OAuthUsagePeriod design{8, instantText(seen + 5 * 24h + 2h)};
    return {.fiveHour = session,
            .sevenDay = weekly,
            .sevenDayOpus = std::nullopt,
            .sevenDayOmelette = design,
            .extraUsage = OAuthExtraUsage{true, 5'000, 1'240, 24.8}};
}

const QByteArray components = R"json({"components":[
{"id":"yyzkbfz2thpt","name":"Claude Code","status":"operational"},
{"id":"k8w3r06qmzrp","name":"Claude API (api.anthropic.com)","status":"degraded_performance"}]})json";

QByteArray appcast() {
    return R"(<?xml version="1.0" encoding="utf-8"?>
<rss version="2.0" xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle">
<channel><title>Burnwick</title>
<item><sparkle:shortVersionString>)" +
           offeredVersion().toUtf8() + "</sparkle:shortVersionString></item></channel></rss>\n";
}

} // namespace

QString offeredVersion() {
    const auto own = QVersionNumber::fromString(QString::fromStdString(std::string(version())));
    return QVersionNumber(own.majorVersion(), own.minorVersion() + 1, 0).toString();
}

std::vector<Limit> limitsAt(Instant now) {
    return limitsFrom(usage(now), now);
}

void standIn(test::ScriptedServer &server, Instant now) {
    const test::ScriptedAnswer page{
        200,
        "This is a demonstration of Burnwick: nothing was sent anywhere, and there is nothing here.\n",
        {{"Content-Type", "text/plain; charset=utf-8"}, {"Connection", "close"}}};
    server.script("/api/oauth/usage", {{200, encodeUsageResponse(usage(now))}});
    server.script(
        "/api/oauth/token",
        {{200, R"({"access_token":"demo-access","refresh_token":"demo-refresh","expires_in":28800})"}});
    server.script("/api/v2/components.json", {{200, components}});
    server.script("/appcast.xml", {{200, appcast()}});
    for (const QByteArray target : {"/login", "/feedback"})
        server.script(target, {page});
    for (const ReleaseForm form : {ReleaseForm::page, ReleaseForm::diskImage}) {
        const QUrl release = releaseURL(server.url(), form, offeredVersion());
        server.script(release.path(QUrl::FullyEncoded).toUtf8(), {page});
    }
}

} // namespace burnwick::demo
