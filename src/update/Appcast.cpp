// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/Appcast.h"

#include "update/VersionOrder.h"

#include <QXmlStreamReader>

#include <utility>

namespace burnwick {

namespace {

/// Whether the text between two angle brackets can hold more attributes than any feed needs. The reader
/// compares each attribute of an element with all the others; a megabyte of them would take it a minute.
bool isCrowded(const QByteArray &document) {
    constexpr int mostAttributes = 1000;
    int possible = 0;
    for (const char c : document) {
        if (c == '<')
            possible = 0;
        else if (c == '=' && ++possible > mostAttributes)
            return true;
    }
    return false;
}

/// Whether a document type declaration stands before the root element. Asked before the document is given to
/// the reader, which would work through the declaration first, for seconds when it is made for that.
bool declaresType(const QByteArray &document) {
    qsizetype at = document.indexOf('<');
    while (at >= 0) {
        const QByteArrayView rest = QByteArrayView(document).sliced(at);
        if (rest.startsWith("<?"))
            at = document.indexOf("?>", at);
        else if (rest.startsWith("<!--"))
            at = document.indexOf("-->", at + 4);
        else
            return rest.startsWith("<!");
        at = at < 0 ? at : document.indexOf('<', at);
    }
    return false;
}

/// The version of the item whose start was just read; empty when it has none. Leaves at its end.
QString readVersion(QXmlStreamReader &xml) {
    const QLatin1String name("sparkle:shortVersionString");
    QString version;
    while (xml.readNextStartElement()) {
        if (xml.qualifiedName() == name)
            version = xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed();
        else if (xml.qualifiedName() == QLatin1String("enclosure") && version.isEmpty()) {
            version = xml.attributes().value(name).trimmed().toString();
            xml.skipCurrentElement();
        } else
            xml.skipCurrentElement();
    }
    return version.size() <= longestVersion ? version : QString();
}

void readChannel(QXmlStreamReader &xml, Appcast &appcast) {
    while (xml.readNextStartElement()) {
        if (xml.qualifiedName() != QLatin1String("item")) {
            xml.skipCurrentElement();
            continue;
        }
        AppcastItem item{readVersion(xml)};
        if (item.displayVersionString.isEmpty())
            continue;
        if (!appcast.newest ||
            std::is_gt(compareVersions(item.displayVersionString, appcast.newest->displayVersionString)))
            appcast.newest = std::move(item);
    }
}

} // namespace

std::optional<Appcast> readAppcast(const QByteArray &document) {
    if (!QUtf8StringView(document).isValidUtf8() || declaresType(document) || isCrowded(document))
        return std::nullopt;
    QXmlStreamReader xml(QString::fromUtf8(document));
    // The quick look for the first version goes by the prefix as it is written, and so does this.
    xml.setNamespaceProcessing(false);
    if (!xml.readNextStartElement() || xml.qualifiedName() != QLatin1String("rss"))
        return std::nullopt;
    Appcast appcast;
    while (xml.readNextStartElement()) {
        if (xml.qualifiedName() == QLatin1String("channel"))
            readChannel(xml, appcast);
        else
            xml.skipCurrentElement();
    }
    while (!xml.atEnd())
        xml.readNext();
    if (xml.hasError())
        return std::nullopt;
    return appcast;
}

} // namespace burnwick
