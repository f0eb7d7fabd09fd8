// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/ReleaseAddresses.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

TEST(ReleaseAddressesTest, AVersionStaysWithinTheLastSegment) {
    const std::pair<QString, QByteArray> rows[] = {
        {QStringLiteral("1.10.0"), "1.10.0"},
        {QStringLiteral("1/../../evil"), "1%2F..%2F..%2Fevil"},
        {QStringLiteral("1?a=b#c"), "1%3Fa%3Db%23c"},
        {QStringLiteral("%2F%2e"), "%252F%252e"},
        {QStringLiteral("1\r\n2\t3"), "1%0D%0A2%093"},
        {QStringLiteral("\u00fc\u2713"), "%C3%BC%E2%9C%93"},
        {QString(QChar(u'\0')), "%00"},
    };
    const QUrl base(QStringLiteral("https://burnwick.test:8443/get/"));
    const QByteArray releases = "https://burnwick.test:8443/get/releases/";
    for (const auto &[version, segment] : rows) {
        EXPECT_EQ(releaseURL(base, ReleaseForm::page, version).toEncoded(), releases + segment);
        EXPECT_EQ(releaseURL(base, ReleaseForm::diskImage, version).toEncoded(),
                  releases + "Burnwick-" + segment + ".dmg");
    }
    for (const QString &folder : {QStringLiteral("."), QStringLiteral("..")})
        EXPECT_EQ(releaseURL(base, ReleaseForm::page, folder).toEncoded(), releases);
}

TEST(ReleaseAddressesTest, HostsBelowExampleArePlaceholders) {
    const std::pair<const char *, bool> rows[] = {
        {"https://burnwick.example", true}, {"https://www.Burnwick.Example/path", true},
        {"https://example", true},          {"https://burnwick.example.org", false},
        {"https://notexample", false},      {"http://127.0.0.1:8080", false}};
    for (const auto &[url, isExpected] : rows)
        EXPECT_EQ(isPlaceholder(QUrl(QString::fromLatin1(url))), isExpected) << url;
}

} // namespace
} // namespace burnwick
