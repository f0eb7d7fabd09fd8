// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/AppcastCheck.h"

#include "net/HttpClient.h"
#include "support/Outcome.h"
#include "support/ScriptedServer.h"

#include <gtest/gtest.h>

#include <memory>

namespace burnwick {
namespace {

using test::resultOf;
using test::ScriptedAnswer;
using test::ScriptedServer;
using Ending = ScriptedAnswer::Ending;
using Kind = AppcastVerdict::Kind;

const QByteArray target = "/appcast.xml";
const AppcastVerdict couldNotCheck;

QByteArray element(const QByteArray &version) {
    return "<sparkle:shortVersionString>" + version + "</sparkle:shortVersionString>";
}

AppcastVerdict newer(const char *version) {
    return {Kind::newerVersion, QString::fromUtf8(version)};
}

// What a text comes to is in the corpus of the fuzzers, with an oracle that looks at its bytes.

class CheckAppcastTest : public testing::Test {
protected:
    AppcastVerdict answering(ScriptedAnswer answer) {
        m_server.script(target, {std::move(answer)});
        return resultOf(checkAppcast(m_http, m_server.url()));
    }

    ScriptedServer m_server;
    HttpClient m_http;
};

TEST_F(CheckAppcastTest, OnlyTheBodyDecides) {
    const struct {
        ScriptedAnswer answer;
        AppcastVerdict verdict;
    } rows[] = {
        {{200, element("999.0")}, newer("999.0")},
        {{500, element("999.0")}, newer("999.0")},
        {{404, "<html>Not Found</html>"}, couldNotCheck},
        {{200, element("999.0") + "<!-- and much more -->", {}, Ending::cut}, couldNotCheck},
        {{200, element("999.0"), {}, Ending::endless}, couldNotCheck},
        {{200, {}, {}, Ending::hangUp}, couldNotCheck},
    };
    for (const auto &row : rows)
        EXPECT_EQ(answering(row.answer), row.verdict)
            << row.answer.status << ' ' << static_cast<int>(row.answer.ending);
}

TEST_F(CheckAppcastTest, NeverThrows) {
    EXPECT_EQ(resultOf(checkAppcast(m_http, QUrl())), couldNotCheck);
    EXPECT_EQ(resultOf(checkAppcast(m_http, QUrl(QStringLiteral("nonsense:")))), couldNotCheck);

    m_server.script(target, {{200, {}, {}, Ending::silence}});
    auto leaving = std::make_unique<HttpClient>();
    const auto outcome = test::outcomeOf(checkAppcast(*leaving, m_server.url()));
    leaving.reset();
    ASSERT_TRUE(outcome->value.has_value());
    EXPECT_EQ(*outcome->value, couldNotCheck);
}

} // namespace
} // namespace burnwick
