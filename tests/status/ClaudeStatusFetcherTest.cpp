// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "status/ClaudeStatusFetcher.h"

#include "net/HttpClient.h"
#include "status/ComponentsResponse.h"
#include "support/Outcome.h"
#include "support/ScriptedServer.h"
#include "json/DecodeError.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

using test::errorOf;
using test::resultOf;
using test::ScriptedServer;
using Status = ClaudeComponentStatus::Status;
using Statuses = std::vector<ClaudeComponentStatus>;

constexpr auto codeID = "yyzkbfz2thpt";
constexpr auto apiID = "k8w3r06qmzrp";
const QByteArray target = "/api/v2/components.json";

QByteArray component(const char *id, const char *name, const char *status) {
    return QByteArray(R"({"id":")") + id + R"(","name":")" + name + R"(","status":")" + status + R"("})";
}

QByteArray document(const QByteArrayList &components) {
    return R"({"page":{"id":"x"},"components":[)" + components.join(',') + "]}";
}

TEST(ComponentsResponseTest, FoldsTheStatusTexts) {
    const struct {
        const char *text;
        Status status;
    } rows[] = {
        {"operational", Status::operational}, {"degraded_performance", Status::degraded},
        {"partial_outage", Status::degraded}, {"under_maintenance", Status::degraded},
        {"major_outage", Status::outage},     {"", Status::unknown},
    };
    for (const auto &row : rows) {
        const auto response = decodeComponentsResponse(document({component(codeID, "Code", row.text)}));
        EXPECT_EQ(claudeStatusesIn(response), (Statuses{{"Code", row.status}})) << row.text;
    }
}

TEST(ComponentsResponseTest, PicksTheTwoAndPutsClaudeCodeFirst) {
    const struct {
        QByteArrayList components;
        std::vector<std::string> names;
    } rows[] = {
        {{component(apiID, "API", ""), component("other", "Web", ""), component(codeID, "Code", "")},
         {"Code", "API"}},
        {{component(apiID, "API", "")}, {"API"}},
        {{component(apiID, "1", ""), component(codeID, "2", ""), component(apiID, "3", ""),
          component(codeID, "4", "")},
         {"2", "4", "1", "3"}},
        {{component("YYZKBFZ2THPT", "Code", ""), component("other", "Web", "")}, {}},
        {{}, {}},
    };
    for (const auto &row : rows) {
        std::vector<std::string> names;
        for (const auto &status : claudeStatusesIn(decodeComponentsResponse(document(row.components))))
            names.push_back(status.name);
        EXPECT_EQ(names, row.names);
    }
}

TEST(ComponentsResponseTest, WhatIsNotTheDocumentFails) {
    for (const char *body :
         {"", "<html>", "[]", "{}", R"({"components":null})", R"({"components":{}})", R"({"components":[1]})",
          R"({"components":[{"id":"a","status":"b"}]})", R"({"components":[{"id":"a","name":"b"}]})",
          R"({"components":[{"name":"a","status":"b"}]})",
          R"({"components":[{"id":"a","name":null,"status":"b"}]})"})
        EXPECT_THROW(static_cast<void>(decodeComponentsResponse(body)), DecodeError) << body;
}

class ClaudeStatusFetcherTest : public testing::Test {
protected:
    QCoro::Task<Statuses> fetch() {
        return ClaudeStatusFetcher(m_http, m_server.url(QString::fromUtf8(target))).fetchStatuses();
    }

    ScriptedServer m_server;
    HttpClient m_http;
};

TEST_F(ClaudeStatusFetcherTest, AsksForTheDocumentWithoutCredentials) {
    m_server.script(target, {{200, document({component(apiID, "API", "major_outage"),
                                             component(codeID, "Code", "operational")})}});
    EXPECT_EQ(resultOf(fetch()), (Statuses{{"Code", Status::operational}, {"API", Status::outage}}));
    ASSERT_EQ(m_server.requests().size(), 1);
    const auto &request = m_server.requests().front();
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.target, target);
    EXPECT_TRUE(request.body.isEmpty());
    EXPECT_TRUE(request.header("Authorization").isNull());
    EXPECT_TRUE(request.header("anthropic-beta").isNull());
}

TEST_F(ClaudeStatusFetcherTest, OnlyTheBodyDecides) {
    m_server.script(target, {{503, document({component(apiID, "API", "major_outage")})},
                             {503, "<html>Sorry</html>"},
                             {200, "[]"}});
    EXPECT_EQ(resultOf(fetch()), (Statuses{{"API", Status::outage}}));
    EXPECT_NO_THROW(errorOf<DecodeError>(fetch()));
    EXPECT_NO_THROW(errorOf<DecodeError>(fetch()));
}

} // namespace
} // namespace burnwick
