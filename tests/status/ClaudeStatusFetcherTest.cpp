// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "status/ClaudeStatusFetcher.h"

#include "net/HttpClient.h"
#include "status/ComponentsResponse.h"
#include "support/Outcome.h"
#include "support/ScriptedServer.h"
#include "json/JsonReading.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

using test::errorOf;
using test::resultOf;
using Status = ClaudeComponentStatus::Status;
using Statuses = std::vector<ClaudeComponentStatus>;

constexpr auto codeID = "yyzkbfz2thpt";
constexpr auto apiID = "k8w3r06qmzrp";

QByteArray component(const char *id, const char *name, const char *status = "") {
    return QByteArray(R"({"id":")") + id + R"(","name":")" + name + R"(","status":")" + status + R"("})";
}

QByteArray document(const QByteArrayList &components) {
    return R"({"page":{"id":"x"},"components":[)" + components.join(',') + "]}";
}

TEST(ComponentsResponseTest, SelectsTheTwoComponentsWithClaudeCodeFirst) {
    constexpr auto unknown = Status::unknown;
    const struct {
        QByteArrayList components;
        Statuses statuses;
    } rows[] = {
        {{component(apiID, "1", "operational"), component("other", "2"),
          component(codeID, "3", "Operational"), component(apiID, "4", "degraded_performance"),
          component(codeID, "5", "partial_outage"), component(codeID, "6", "under_maintenance"),
          component(codeID, "7", "major_outage")},
         {{"3", unknown},
          {"5", Status::degraded},
          {"6", Status::degraded},
          {"7", Status::outage},
          {"1", Status::operational},
          {"4", Status::degraded}}},
        {{component(apiID, "API")}, {{"API", unknown}}},
        {{component("YYZKBFZ2THPT", "Code"), component("other", "Web")}, {}},
        {{}, {}},
    };
    for (const auto &row : rows)
        EXPECT_EQ(claudeStatusesIn(decodeComponentsResponse(document(row.components))), row.statuses);
}

TEST(ComponentsResponseTest, OtherBodiesAreDecodeErrors) {
    for (const char *body :
         {"", "<html>", "[]", "{}", R"({"components":null})", R"({"components":{}})", R"({"components":[1]})",
          R"({"components":[{"id":"a","status":"b"}]})", R"({"components":[{"id":"a","name":"b"}]})",
          R"({"components":[{"name":"a","status":"b"}]})",
          R"({"components":[{"id":"a","name":null,"status":"b"}]})"})
        EXPECT_THROW(static_cast<void>(decodeComponentsResponse(body)), DecodeError) << body;
}

TEST(ClaudeStatusFetcherTest, SendsNoCredentialsAndIgnoresTheHttpStatus) {
    test::ScriptedServer server;
    HttpClient http;
    ClaudeStatusFetcher fetcher(http, server.url(QStringLiteral("/components.json")));
    server.script("/components.json",
                  {{503, document({component(apiID, "API", "major_outage")})}, {503, "<html>Sorry</html>"}});
    EXPECT_EQ(resultOf(fetcher.fetchStatuses()), (Statuses{{"API", Status::outage}}));
    EXPECT_NO_THROW(errorOf<DecodeError>(fetcher.fetchStatuses()));
    const auto &request = server.requests().front();
    EXPECT_EQ(request.method, "GET");
    EXPECT_TRUE(request.body.isEmpty());
    EXPECT_TRUE(request.header("Authorization").isNull());
    EXPECT_TRUE(request.header("anthropic-beta").isNull());
}

} // namespace
} // namespace burnwick
