// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/CredentialsDocument.h"

#include <gtest/gtest.h>

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
        {R"("2023-11-14T22:13:20Z")", november},
        {R"("2023-11-15T00:13:20+02:00")", november},
        {R"("2023\u002d11-14T22:13:20Z")", november},
        {"1700000000000.5", november + 500us},
        {"1700000000000.0000019", november + 1ns},
        {"1.7e12", november},
        {"-0.5", Instant() - 500us},
        {"9223372036854.775807", Instant::max()},
        {"9223372036855", Instant::max()},
        {"1e400", Instant::max()},
        {"-1e300", Instant::min()},
        {R"("2023-11-14T22:13:20.123Z")", std::nullopt},
        {R"("\ud800")", std::nullopt},
        {"null", std::nullopt},
        {"[1700000000000]", std::nullopt},
    };
    for (const auto &row : rows) {
        const auto credentials = credentialsFromDocument(
            documentWith(R"("accessToken":"a","expiresAt":)" + std::string(row.value)));
        EXPECT_EQ(credentials, (OAuthCredentials{"a", std::nullopt, row.expiry})) << row.value;
    }
}

TEST(CredentialsDocument, TheTokensAreReadWhateverStandsAround) {
    const OAuthCredentials both{"a", "r", std::nullopt};
    const OAuthCredentials accessOnly{"a", std::nullopt, std::nullopt};
    const struct {
        std::string document;
        OAuthCredentials credentials;
    } rows[] = {
        {documentWith(R"("accessToken":"a","refreshToken":"r")"), both},
        {" {\n\t\"claudeAiOauth\" : { \"refreshToken\" :\r\"r\" , \"accessToken\" : \"a\" } }\n", both},
        {documentWith(R"("accessToken":"a","refreshToken":5)"), accessOnly},
        {documentWith(R"("accessToken":"a","refreshToken":null)"), accessOnly},
        {documentWith(R"("accessToken":"\"\\\u00fc\ud83d\ude00")"),
         {"\"\\\u00fc\U0001F600", std::nullopt, std::nullopt}},
        {R"({"accessToken":"x","other":{"accessToken":"y"},"claudeAiOauth":{"accessToken":"a"}})",
         accessOnly},
        {documentWith(R"("accessToken":"a","scopes":{"accessToken":"x","refreshToken":"y"})"), accessOnly},
    };
    for (const auto &row : rows)
        EXPECT_EQ(credentialsFromDocument(row.document), row.credentials) << row.document.substr(0, 120);
}

TEST(CredentialsDocument, WithoutATokenThereIsNoLogin) {
    for (const char *members :
         {"", R"("refreshToken":"r")", R"("accessToken":17)", R"("accessToken":["a"])", R"("accessToken":"")",
          R"("accessToken":"\ud800")", R"("accessToken":"a","accessToken":1)"})
        EXPECT_EQ(credentialsFromDocument(documentWith(members)), std::nullopt) << members;
}

TEST(CredentialsDocument, APatchChangesNoOtherByte) {
    const std::string other =
        R"("big":9007199254740993,"bigger":123456789012345678901234567890,"f":0.10000000000000000555,)"
        R"("one":1.0,"huge":1e400,"u":"\u00fc\ud83d\ude00\ud800\/ü","k":1,"k":2,"n":[[[{}]],null,true] )";
    const Instant expiry = november + 123456789ns;
    const std::string before = "\n{" + other + R"(, "claudeAiOauth" : { )" + other +
                               R"(, "expiresAt" : "soon" , "accessToken" : [1, 2] , "refreshToken":null,)" +
                               other + "}," + other + "}\n";
    EXPECT_EQ(patchedDocument(before, "A\"\\", "R\n\u00fc", expiry),
              "\n{" + other + R"(, "claudeAiOauth" : { )" + other +
                  R"(, "expiresAt" : 1700000000123.456789 , "accessToken" : "A\"\\" , "refreshToken":"R\n)" +
                  "\u00fc\"," + other + "}," + other + "}\n");
    EXPECT_EQ(patchedDocument(documentWith(R"( "x":{})"), "a", std::nullopt, expiry),
              documentWith(R"( "x":{},"accessToken":"a","expiresAt":1700000000123.456789)"));
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

} // namespace
} // namespace burnwick
