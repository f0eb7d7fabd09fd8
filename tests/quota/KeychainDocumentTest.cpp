// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/CredentialsDocument.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using std::chrono::sys_days;

const Instant november = sys_days(2023y / 11 / 14) + 22h + 13min + 20s;

std::string documentWith(const std::string &members) {
    return R"({"claudeAiOauth":{)" + members + "}}";
}

TEST(CredentialsDocument, TheExpiryIsReadFromEachOfItsForms) {
    const struct {
        const char *value;
        std::optional<Instant> expiry;
    } rows[] = {
        {"1700000000000", november},
        {"1700000000000.0", november},
        {R"("2023-11-14T22:13:20Z")", november},
        {R"("2023-11-15T00:13:20+02:00")", november},
        {R"("2023\u002d11-14T22:13:20Z")", november},
        {"1700000000000.5", november + 500us},
        {"1700000000000.000001", november + 1ns},
        {"1700000000000.0000019", november + 1ns},
        {"1.7e12", november},
        {"17000000000000.00E-1", november},
        {"0", Instant()},
        {"-0.5", Instant() - 500us},
        {"-1", Instant() - 1ms},
        {"9223372036854.775807", Instant::max()},
        {"9223372036855", Instant::max()},
        {"99999999999999999999999999", Instant::max()},
        {"1e400", Instant::max()},
        {"-1e300", Instant::min()},
        {R"("2023-11-14T22:13:20.123Z")", std::nullopt},
        {R"("1700000000000")", std::nullopt},
        {R"("2023-11-14")", std::nullopt},
        {R"("\ud800")", std::nullopt},
        {R"("")", std::nullopt},
        {"true", std::nullopt},
        {"null", std::nullopt},
        {"[1700000000000]", std::nullopt},
        {"{}", std::nullopt},
    };
    for (const auto &row : rows) {
        const auto credentials = credentialsFromDocument(
            documentWith(R"("accessToken":"a","expiresAt":)" + std::string(row.value)));
        EXPECT_EQ(credentials, (OAuthCredentials{"a", std::nullopt, row.expiry})) << row.value;
    }
}

TEST(CredentialsDocument, TheLocaleDoesNotMatter) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char *name : {"de_DE.UTF-8", "C.UTF-8"})
        std::setlocale(LC_ALL, name); // the first of them is not installed everywhere
    const auto credentials = credentialsFromDocument(documentWith(R"("accessToken":"a","expiresAt":1.7e12)"));
    std::setlocale(LC_ALL, before.c_str());
    EXPECT_EQ(credentials, (OAuthCredentials{"a", std::nullopt, november}));
}

TEST(CredentialsDocument, TheTokensAreReadWhateverStandsAround) {
    const OAuthCredentials both{"a", "r", std::nullopt};
    const OAuthCredentials accessOnly{"a", std::nullopt, std::nullopt};
    const std::string deep = std::string(100'000, '[') + std::string(100'000, ']');
    const struct {
        std::string document;
        OAuthCredentials credentials;
    } rows[] = {
        {documentWith(R"("accessToken":"a","refreshToken":"r")"), both},
        {" {\n\t\"claudeAiOauth\" : { \"refreshToken\" :\r\"r\" , \"accessToken\" : \"a\" } }\n", both},
        {documentWith(R"("accessToken":"a","refreshToken":5)"), accessOnly},
        {documentWith(R"("accessToken":"a","refreshToken":null)"), accessOnly},
        {R"({"claude\u0041iOauth":{"access\u0054oken":"\u0061"}})", accessOnly},
        {documentWith(R"("accessToken":"\"\\\u00fc\ud83d\ude00")"),
         {"\"\\\u00fc\U0001F600", std::nullopt, std::nullopt}},
        {R"({"accessToken":"x","other":{"accessToken":"y"},"claudeAiOauth":{"accessToken":"a"}})",
         accessOnly},
        {documentWith(R"("accessToken":"a","scopes":{"accessToken":"x","refreshToken":"y"})"), accessOnly},
        {R"({"n":123456789012345678901234567890,"e":1e999,"s":"\ud800","claudeAiOauth":{"accessToken":"a"}})",
         accessOnly},
        {R"({"deep":)" + deep + R"(,"claudeAiOauth":{"accessToken":"a"}})", accessOnly},
        // Of equal keys the last counts.
        {documentWith(R"("accessToken":1,"refreshToken":"x","accessToken":"a","refreshToken":"r")"), both},
        {R"({"claudeAiOauth":{"accessToken":"x","refreshToken":"y"},"claudeAiOauth":{"accessToken":"a"}})",
         accessOnly},
    };
    for (const auto &row : rows)
        EXPECT_EQ(credentialsFromDocument(row.document), row.credentials) << row.document.substr(0, 120);
}

TEST(CredentialsDocument, AnythingElseHoldsNoLogin) {
    const struct {
        std::string document;
        bool patchable = false; ///< there is an object to put tokens into
    } rows[] = {
        {""},
        {"null"},
        {"[]"},
        {"{}"},
        {"\"claudeAiOauth\""},
        {R"({"claudeAiOauth":null})"},
        {R"({"claudeAiOauth":[{"accessToken":"a"}]})"},
        {R"({"claudeAiOauth":{"accessToken":"a"},"claudeAiOauth":1})"},
        {R"({"claudeAiOauth":{"accessToken":"a"})"},
        {R"({"claudeAiOauth":{"accessToken":"a"}}})"},
        {R"({"claudeAiOauth":{"accessToken":"a"}} x)"},
        {R"({"claudeAiOauth":{"accessToken":"a"},})"},
        {R"({"claudeAiOauth":{"accessToken":"a",}})"},
        {R"({"claudeAiOauth":{"accessToken":'a'}})"},
        {R"({"claudeAiOauth":{"accessToken":"a"},"n":01})"},
        {R"({"claudeAiOauth":{"accessToken":"a"},"n":NaN})"},
        {"{\"claudeAiOauth\":{\"accessToken\":\"a\xff\"}}"},
        {"{\"claudeAiOauth\":{\"accessToken\":\"a\"},\"b\":\"\xff\"}"},
        {"{\"claudeAiOauth\":{\"accessToken\":\"a\n\"}}"},
        {documentWith(R"("accessToken":"a")") + '\0'},
        {"\xEF\xBB\xBF" + documentWith(R"("accessToken":"a")")},
        {documentWith(""), true},
        {documentWith(R"("refreshToken":"r")"), true},
        {documentWith(R"("accessToken":17)"), true},
        {documentWith(R"("accessToken":null)"), true},
        {documentWith(R"("accessToken":["a"])"), true},
        {documentWith(R"("accessToken":"")"), true},
        {documentWith(R"("accessToken":"\ud800")"), true},
        {documentWith(R"("accessToken":"a","accessToken":1)"), true},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(credentialsFromDocument(row.document), std::nullopt) << row.document;
        const auto patched = patchedDocument(row.document, "new", std::nullopt, std::nullopt);
        EXPECT_EQ(patched.has_value(), row.patchable) << row.document;
        if (patched) {
            EXPECT_EQ(credentialsFromDocument(*patched).value_or(OAuthCredentials()).accessToken, "new")
                << *patched;
        }
    }
}

TEST(CredentialsDocument, APatchChangesNoOtherByte) {
    const std::string other =
        R"("big":9007199254740993,"bigger":123456789012345678901234567890,"f":0.10000000000000000555,)"
        R"("one":1.0,"huge":1e400,"u":"\u00fc\ud83d\ude00\ud800\/ü","k":1,"k":2,"n":[[[{}]],null,true] )";
    const Instant expiry = november + 123456789ns;
    const struct {
        std::string before;
        std::optional<std::string> refreshToken;
        std::optional<Instant> expiry;
        std::string after;
    } rows[] = {
        {documentWith(R"("accessToken":"a","refreshToken":"r","expiresAt":1)"), std::nullopt, std::nullopt,
         documentWith(R"("accessToken":"A\"\\","refreshToken":"r","expiresAt":1)")},
        {documentWith(R"("accessToken":"a","refreshToken":"r","expiresAt":1)"), "R\n\u00fc", expiry,
         documentWith("\"accessToken\":\"A\\\"\\\\\",\"refreshToken\":\"R\\n\u00fc\","
                      "\"expiresAt\":1700000000123.456789")},
        {"\n{" + other + R"(, "claudeAiOauth" : { )" + other +
             R"(, "expiresAt" : "soon" , "accessToken" : [1, 2] , "refreshToken":null,)" + other + "}," +
             other + "}\n",
         "R", expiry,
         "\n{" + other + R"(, "claudeAiOauth" : { )" + other +
             R"(, "expiresAt" : 1700000000123.456789 , "accessToken" : "A\"\\" , "refreshToken":"R",)" +
             other + "}," + other + "}\n"},
        {documentWith(""), "R", expiry,
         documentWith(R"("accessToken":"A\"\\","refreshToken":"R","expiresAt":1700000000123.456789)")},
        {documentWith(" "), std::nullopt, std::nullopt, documentWith(R"( "accessToken":"A\"\\")")},
        {documentWith(R"("x":{})"), std::nullopt, expiry,
         documentWith(R"("x":{},"accessToken":"A\"\\","expiresAt":1700000000123.456789)")},
        {documentWith(R"("accessToken":"a","accessToken":"b")"), std::nullopt, std::nullopt,
         documentWith(R"("accessToken":"a","accessToken":"A\"\\")")},
        {R"({"claudeAiOauth":{"accessToken":"a"},"claudeAiOauth":{"accessToken":"b"}})", std::nullopt,
         std::nullopt, R"({"claudeAiOauth":{"accessToken":"a"},"claudeAiOauth":{"accessToken":"A\"\\"}})"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(patchedDocument(row.before, "A\"\\", row.refreshToken, row.expiry), row.after);
}

TEST(CredentialsDocument, AWrittenExpiryReadsBackToTheSameInstant) {
    for (const Instant expiry : {november, november + 1ns, november + 500us, november - 1ns, Instant(),
                                 Instant() + 1ns, Instant() - 1ns, Instant::max(), Instant::min()}) {
        const auto document = patchedDocument(documentWith(""), "a", std::nullopt, expiry);
        ASSERT_TRUE(document);
        EXPECT_EQ(credentialsFromDocument(*document), (OAuthCredentials{"a", std::nullopt, expiry}))
            << *document;
    }
    EXPECT_EQ(patchedDocument(documentWith(""), "a", std::nullopt, november),
              documentWith(R"("accessToken":"a","expiresAt":1700000000000)"));
}

TEST(CredentialsDocument, ATokenThatIsNoTextIsNotWritten) {
    EXPECT_EQ(patchedDocument(documentWith(""), "\xff", std::nullopt, std::nullopt), std::nullopt);
    EXPECT_EQ(patchedDocument(documentWith(""), "a", "\xff", std::nullopt), std::nullopt);
}

TEST(OAuthCredentials, ExpireFiveMinutesEarly) {
    const OAuthCredentials credentials{"a", std::nullopt, november};
    EXPECT_FALSE(isExpired(credentials, november - 300s - 1ns));
    EXPECT_TRUE(isExpired(credentials, november - 300s));
    EXPECT_TRUE(isExpired(credentials, november + 24h));
    EXPECT_FALSE(isExpired({"a", "r", std::nullopt}, november));
}

} // namespace
} // namespace burnwick
