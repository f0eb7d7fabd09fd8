// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/Appcast.h"

#include "net/HttpClient.h"
#include "support/Outcome.h"
#include "support/ScriptedServer.h"

#include <gtest/gtest.h>

#include <memory>

namespace burnwick {
namespace {

using test::resultOf;
using test::ScriptedAnswer;
using Ending = ScriptedAnswer::Ending;
using Kind = AppcastVerdict::Kind;

const QByteArray target = "/appcast.xml";
const QByteArray newer = "<sparkle:shortVersionString>999.0</sparkle:shortVersionString>";

// The corpus of the fuzzers covers the reading of the body and the order of versions.

struct CheckAppcastTest : testing::Test {
    test::ScriptedServer server;
    HttpClient http;
};

TEST_F(CheckAppcastTest, OnlyTheBodyDecides) {
    const struct {
        ScriptedAnswer answer;
        Kind kind;
    } rows[] = {
        {{200, newer}, Kind::newerVersion},
        {{500, newer}, Kind::newerVersion},
        {{404, "<html>Not Found</html>"}, Kind::couldNotCheck},
        {{200, newer + "<!-- and much more -->", {}, Ending::cut}, Kind::couldNotCheck},
        {{200, newer, {}, Ending::endless}, Kind::couldNotCheck},
        {{200, {}, {}, Ending::hangUp}, Kind::couldNotCheck},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << row.answer.status << ' ' << static_cast<int>(row.answer.ending));
        server.script(target, {row.answer});
        const auto verdict = resultOf(checkAppcast(http, server.url()));
        EXPECT_EQ(verdict.kind, row.kind);
        EXPECT_EQ(verdict.version, row.kind == Kind::newerVersion ? QStringLiteral("999.0") : QString());
        EXPECT_EQ(verdict.problem.isEmpty(), row.kind == Kind::newerVersion);
        EXPECT_TRUE(verdict.isServerReachable);
    }
}

TEST_F(CheckAppcastTest, InvalidURLsAndADestroyedClientFailTheCheck) {
    EXPECT_EQ(resultOf(checkAppcast(http, QUrl())).kind, Kind::couldNotCheck);
    EXPECT_EQ(resultOf(checkAppcast(http, QUrl(QStringLiteral("nonsense:")))).kind, Kind::couldNotCheck);

    server.script(target, {{200, {}, {}, Ending::silence}});
    auto destroyed = std::make_unique<HttpClient>();
    const auto outcome = test::outcomeOf(checkAppcast(*destroyed, server.url()));
    destroyed.reset();
    ASSERT_TRUE(outcome->value.has_value());
    EXPECT_EQ(outcome->value->kind, Kind::couldNotCheck);
}

} // namespace
} // namespace burnwick
