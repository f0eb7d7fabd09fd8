// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/Appcast.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

namespace burnwick {
namespace {

QByteArray feed(const QByteArray &items) {
    return R"(<?xml version="1.0" encoding="utf-8"?><rss version="2.0"><channel><title>Burnwick</title>)" +
           items + "</channel></rss>";
}

QByteArray item(const QByteArray &version) {
    return "<item><sparkle:shortVersionString>" + version + "</sparkle:shortVersionString></item>";
}

/// "malformed", "none" or the newest version.
QString summary(const QByteArray &document) {
    const auto appcast = readAppcast(document);
    if (!appcast)
        return QStringLiteral("malformed");
    return appcast->newest ? appcast->newest->displayVersionString : QStringLiteral("none");
}

QByteArray repeated(const QByteArray &text, qsizetype bytes) {
    return text.repeated(bytes / text.size());
}

// What is no feed is in the corpus of the fuzzers.

TEST(AppcastTest, FindsTheNewestVersion) {
    const QByteArray enclosure = R"(<item><enclosure url="x" sparkle:shortVersionString="2.1"/></item>)";
    const struct {
        QByteArray document;
        const char *newest;
    } rows[] = {
        {feed(item("1.9.2") + item("1.10.0") + item("1.9.9")), "1.10.0"},
        {feed(item("1.0") + "<!-- " + item("9.0") + " -->"), "1.0"},
        {feed(item("<![CDATA[1.5]]>")), "1.5"},
        {feed("<description><![CDATA[<!DOCTYPE html>]]></description>" + item("1.5")), "1.5"},
        {"<!--><!DOCTYPE rss>--><?a <!DOCTYPE?>" + feed(item("1.5")).mid(38), "1.5"},
        {feed(item("1&#46;5 &lt;b&gt;")), "1.5 <b>"},
        {feed(item("../1%2F 2")), "../1%2F 2"},
        {feed(item("1.0") + enclosure), "2.1"},
        {feed(item(QByteArray(64, '9'))), "9999999999999999999999999999999999999999999999999999999999999999"},
        {feed(item("1.0") + item(QByteArray(65, '9'))), "1.0"},
        // versions that are no item's
        {feed("<sparkle:shortVersionString>9</sparkle:shortVersionString>" + item("1.0")), "1.0"},
        {feed("<item><other>" + item("9") + "</other></item>" + item("1.0")), "1.0"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(summary(row.document), QString::fromUtf8(row.newest)) << row.document.toStdString();
}

TEST(AppcastTest, AMegabyteOfMaliceIsReadQuickly) {
    constexpr qsizetype size = qsizetype{1} << 20;
    QByteArray entities = "<!DOCTYPE rss [<!ENTITY a0 \"x\">";
    for (int i = 1; i < 10000; ++i)
        entities += "<!ENTITY a" + QByteArray::number(i) + " \"" +
                    ("&a" + QByteArray::number(i - 1) + ";").repeated(8) + "\">";
    QByteArray attributes = "<rss";
    for (int i = 0; attributes.size() < size; ++i)
        attributes += " a" + QByteArray::number(i) + "='>'";
    const struct {
        const char *what;
        QByteArray document;
        const char *summary;
    } rows[] = {
        {"entities", entities + "]><rss>&a9999;</rss>", "malformed"},
        {"depth", repeated("<rss>", size), "malformed"},
        {"attributes", attributes + "/>", "malformed"},
        {"one version", feed(item(repeated("9", size))), "none"},
        {"versions alike", feed(repeated(item(QByteArray(64, '0')), size)),
         "0000000000000000000000000000000000000000000000000000000000000000"},
        {"no end of a tag", "<rss" + repeated(" ", size), "malformed"},
        {"comments", feed(repeated("<!---->", size) + item("1.0")), "1.0"},
    };
    for (const auto &row : rows) {
        QElapsedTimer timer;
        timer.start();
        EXPECT_EQ(summary(row.document), QString::fromUtf8(row.summary)) << row.what;
        EXPECT_LT(timer.elapsed(), 5000) << row.what;
    }
}

} // namespace
} // namespace burnwick
