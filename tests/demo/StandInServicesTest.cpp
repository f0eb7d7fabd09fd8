// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "demo/StandInServices.h"

#include "model/Clock.h"
#include "net/HttpClient.h"
#include "support/Outcome.h"
#include "support/ScriptedServer.h"
#include "update/Appcast.h"
#include "update/ReleaseAddresses.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

TEST(StandInServicesTest, OfferANewerReleaseAndAPageForEachLink) {
    test::ScriptedServer services;
    demo::standIn(services, SystemClock().now());
    HttpClient http;
    const AppcastVerdict verdict = test::resultOf(checkAppcast(http, services.url()));
    ASSERT_EQ(verdict.kind, AppcastVerdict::Kind::newerVersion);
    for (const QUrl &page :
         {releaseURL(services.url(), ReleaseForm::page, verdict.version),
          services.url(QStringLiteral("/login")), services.url(QStringLiteral("/feedback"))})
        EXPECT_EQ(test::resultOf(http.send({HttpMethod::get, page})).status, 200)
            << page.path().toStdString();
}

} // namespace
} // namespace burnwick
