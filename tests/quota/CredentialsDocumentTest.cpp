// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/CredentialsDocument.h"

#include <gtest/gtest.h>

#include <string>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using std::chrono::sys_days;

// The corpus of the fuzzers covers malformed documents.

const Instant november = sys_days(2023y / 11 / 14) + 22h + 13min + 20s;

/// The last whole millisecond of Instant.
const Instant farthest = std::chrono::floor<std::chrono::milliseconds>(Instant::max());

std::string documentWith(const std::string &members) {
    return R"({"claudeAiOauth":{)" + members + "}}";
}

TEST(CredentialsDocument, AnExpiryIsReadInEachFormAndAsWritten) {
    const struct {
        const char *value;
        std::optional<Instant> expiry;
    } rows[] = {
        {"1700000000000", november},
        {R"("2023-11-15T00:13:20+02:00")", november},
        {R"("2023\u002d11-14T22:13:20Z")", november},
        {"1700000000000.5", november + 500us},
        {"1700000000123", november + 123ms},
        {"1.7e12", november},
        {"-0.5", Instant() - 500us},
        {"9223372036855", farthest},
        {"-1e300", Instant() - farthest.time_since_epoch()},
        {R"("2023-11-14T22:13:20.123Z")", std::nullopt},
        {R"("\ud800")", std::nullopt},
        {"1e400", std::nullopt},
        {"null", std::nullopt},
        {"[1700000000000]", std::nullopt},
    };
    for (const auto &row : rows) {
        const auto credentials = credentialsFromDocument(
            documentWith(R"("accessToken":"a","expiresAt":)" + std::string(row.value)));
        EXPECT_EQ(credentials, (OAuthCredentials{"a", std::nullopt, row.expiry})) << row.value;
        const auto patched = patchedDocument(documentWith(""), "a", std::nullopt, row.expiry);
        EXPECT_EQ(credentialsFromDocument(*patched), credentials) << *patched;
    }
}

TEST(CredentialsDocument, TheTokensAreTheStringsOfTheLogin) {
    const OAuthCredentials accessOnly{"a", std::nullopt, std::nullopt};
    const std::pair<std::string, std::optional<OAuthCredentials>> rows[] = {
        {" {\n\t\"claudeAiOauth\" : { \"refreshToken\" :\r\"r\" , \"accessToken\" : \"a\" } }\n",
         OAuthCredentials{"a", "r", std::nullopt}},
        {documentWith(R"("accessToken":"a","refreshToken":5)"), accessOnly},
        {documentWith(R"("accessToken":"\"\\\u00fc\ud83d\ude00")"),
         OAuthCredentials{"\"\\\u00fc\U0001F600", std::nullopt, std::nullopt}},
        {R"({"accessToken":"x","other":{"accessToken":"y"},"claudeAiOauth":{"accessToken":"a"}})",
         accessOnly},
        {documentWith(R"("accessToken":"a","scopes":{"accessToken":"x","refreshToken":"y"})"), accessOnly},
        {documentWith(R"("refreshToken":"r")"), std::nullopt},
        {documentWith(R"("accessToken":17)"), std::nullopt},
        {documentWith(R"("accessToken":"")"), std::nullopt},
        {documentWith(R"("accessToken":"\ud800")"), std::nullopt},
        {documentWith(R"("accessToken":"a","accessToken":1)"), std::nullopt},
    };
    for (const auto &[document, credentials] : rows)
        EXPECT_EQ(credentialsFromDocument(document), credentials) << document;
}

TEST(CredentialsDocument, APatchChangesNoOtherByte) {
    const std::string other =
        R"("big":9007199254740993,"f":0.10000000000000000555,"huge":1e400,"u":"\u00fc\ud800\/ü","k":1,"k":2 )";
    const Instant expiry = november + 123500us;
    const std::string before = "\n{" + other + R"(, "claudeAiOauth" : { )" + other +
                               R"(, "expiresAt" : "soon" , "accessToken" : [1, 2] , "refreshToken":null,)" +
                               other + "}," + other + "}\n";
    EXPECT_EQ(patchedDocument(before, "A\"\\", "R\n\u00fc", expiry),
              "\n{" + other + R"(, "claudeAiOauth" : { )" + other +
                  R"(, "expiresAt" : 1700000000123.5 , "accessToken" : "A\"\\" , "refreshToken":"R\n)" +
                  "\u00fc\"," + other + "}," + other + "}\n");
    EXPECT_EQ(patchedDocument(documentWith(R"( "x":{})"), "a", std::nullopt, expiry),
              documentWith(R"( "x":{},"accessToken":"a","expiresAt":1700000000123.5)"));
}

TEST(CredentialsDocument, TokensThatAreNotUtf8AreNotWritten) {
    EXPECT_EQ(patchedDocument(documentWith(""), "\xff", std::nullopt, std::nullopt), std::nullopt);
    EXPECT_EQ(patchedDocument(documentWith(""), "a", "\xff", std::nullopt), std::nullopt);
}

} // namespace
} // namespace burnwick
