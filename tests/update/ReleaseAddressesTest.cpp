// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/ReleaseAddresses.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

TEST(ReleaseAddressesTest, AVersionStaysWithinTheLastSegment) {
    const struct {
        QString version;
        const char *segment;
    } rows[] = {
        {QStringLiteral("1.10.0"), "1.10.0"},
        {QStringLiteral("1/../../evil"), "1%2F..%2F..%2Fevil"},
        {QStringLiteral("1?a=b#c"), "1%3Fa%3Db%23c"},
        {QStringLiteral("%2F%2e"), "%252F%252e"},
        {QStringLiteral("<b>1</b>&amp;\""), "%3Cb%3E1%3C%2Fb%3E%26amp%3B%22"},
        {QStringLiteral("1\r\n2\t3"), "1%0D%0A2%093"},
        {QStringLiteral("\u00fc\u2713"), "%C3%BC%E2%9C%93"},
        {QString(QChar(u'\0')), "%00"},
    };
    const QUrl base(QStringLiteral("https://burnwick.test:8443/get/"));
    for (const auto &row : rows) {
        const QByteArray segment(row.segment);
        for (const auto &[form, last] : {std::pair(ReleaseForm::page, segment),
                                         {ReleaseForm::diskImage, "Burnwick-" + segment + ".dmg"}}) {
            const QUrl url = releaseURL(base, form, row.version);
            EXPECT_EQ(url.toEncoded(), "https://burnwick.test:8443/get/releases/" + last);
            // The recipient of the address sees the same one.
            EXPECT_EQ(QUrl::fromEncoded(url.toEncoded(), QUrl::StrictMode), url) << row.segment;
        }
    }
    for (const QString &folder : {QStringLiteral("."), QStringLiteral("..")})
        EXPECT_EQ(releaseURL(base, ReleaseForm::page, folder).toEncoded(),
                  "https://burnwick.test:8443/get/releases/");
}

TEST(ReleaseAddressesTest, TheAppcastIsBelowTheBaseURL) {
    EXPECT_EQ(appcastURL(QUrl(QStringLiteral("https://burnwick.test"))).toEncoded(),
              "https://burnwick.test/appcast.xml");
    EXPECT_EQ(appcastURL(QUrl(QStringLiteral("https://burnwick.test/a%2Fb/"))).toEncoded(),
              "https://burnwick.test/a%2Fb/appcast.xml");
}

TEST(ReleaseAddressesTest, HostsBelowExampleArePlaceholders) {
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
