// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/ReleaseAddresses.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

TEST(ReleaseAddressesTest, AVersionStaysWithinTheLastSegment) {
    const struct {
        const char *version;
        const char *segment;
    } rows[] = {
        {"1.10.0", "Burnwick-1.10.0.dmg"},
        {"1/../../evil", "Burnwick-1%2F..%2F..%2Fevil.dmg"},
        {"1?a=b#c", "Burnwick-1%3Fa%3Db%23c.dmg"},
        {"%2F%2e", "Burnwick-%252F%252e.dmg"},
        {"<b>1</b>&amp;\"", "Burnwick-%3Cb%3E1%3C%2Fb%3E%26amp%3B%22.dmg"},
        {"1\r\n2\t3", "Burnwick-1%0D%0A2%093.dmg"},
        {"\u00fc\u2713", "Burnwick-%C3%BC%E2%9C%93.dmg"},
    };
    for (const auto &row : rows) {
        const QUrl url = downloadURL(QUrl(QStringLiteral("https://burnwick.test:8443/get/")),
                                     QString::fromUtf8(row.version));
        EXPECT_EQ(url.toEncoded(), QByteArray("https://burnwick.test:8443/get/releases/") + row.segment)
            << row.version;
        // What a reader of the address makes of it.
        EXPECT_EQ(QUrl::fromEncoded(url.toEncoded(), QUrl::StrictMode), url) << row.version;
    }
    const QUrl withNull = downloadURL(QUrl(QStringLiteral("https://burnwick.test")), QString(QChar(u'\0')));
    EXPECT_EQ(withNull.toEncoded(), "https://burnwick.test/releases/Burnwick-%00.dmg");
}

TEST(ReleaseAddressesTest, TheAppcastIsBelowTheBaseURL) {
    EXPECT_EQ(appcastURL(QUrl(QStringLiteral("https://burnwick.test"))).toEncoded(),
              "https://burnwick.test/appcast.xml");
    EXPECT_EQ(appcastURL(QUrl(QStringLiteral("https://burnwick.test/a%2Fb/"))).toEncoded(),
              "https://burnwick.test/a%2Fb/appcast.xml");
}

TEST(ReleaseAddressesTest, KnowsAPlaceholder) {
    const struct {
        const char *url;
        bool placeholder;
    } rows[] = {{"https://burnwick.example", true}, {"https://www.Burnwick.Example/path", true},
                {"https://example", true},          {"https://burnwick.example.org", false},
                {"https://notexample", false},      {"http://127.0.0.1:8080", false}};
    for (const auto &row : rows)
        EXPECT_EQ(isPlaceholder(QUrl(QString::fromLatin1(row.url))), row.placeholder) << row.url;
}

} // namespace
} // namespace burnwick
