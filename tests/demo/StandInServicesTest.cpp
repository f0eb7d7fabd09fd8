// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "demo/StandInServices.h"

#include "model/Clock.h"
#include "model/Version.h"
#include "net/HttpClient.h"
#include "support/Outcome.h"
#include "support/ScriptedServer.h"
#include "update/Appcast.h"
#include "update/ReleaseAddresses.h"
#include "update/VersionOrder.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

TEST(StandInServicesTest, OfferANewerReleaseAndAPageForEachLink) {
    test::ScriptedServer services;
    demo::standIn(services, SystemClock().now());
    HttpClient http;
    const auto appcast =
        readAppcast(test::resultOf(http.send({HttpMethod::get, appcastURL(services.url())})).body);
    ASSERT_TRUE(appcast && appcast->newest);
    const QString offered = appcast->newest->displayVersionString;
    EXPECT_TRUE(compareVersions(offered, QString::fromStdString(std::string(version()))) > 0);
    for (const QUrl &page :
         {releaseURL(services.url(), ReleaseForm::page, offered), services.url(QStringLiteral("/login")),
          services.url(QStringLiteral("/feedback"))})
        EXPECT_EQ(test::resultOf(http.send({HttpMethod::get, page})).status, 200)
            << page.path().toStdString();
}

} // namespace
} // namespace burnwick
