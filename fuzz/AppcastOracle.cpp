// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "fuzz/Oracles.h"
#include "update/Appcast.h"
#include "update/AppcastCheck.h"
#include "update/VersionOrder.h"

#include <QStringDecoder>
#include <QStringList>

#include <algorithm>
#include <compare>
#include <string>

namespace burnwick::fuzz {

namespace {

constexpr QStringView currentVersion = u"1.9.2";

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

/// The text with every number as long as that, so that the order of texts is the order of versions.
QString padded(const QString &version, qsizetype width) {
    QString text;
    for (qsizetype at = 0; at < version.size();) {
        qsizetype end = at;
        while (end < version.size() && isDigit(version[end]))
            ++end;
        if (end > at)
            text += version.sliced(at, end - at).rightJustified(width, u'0');
        else
            text += version[end++];
        at = end;
    }
    return text;
}

qsizetype longestNumber(const QString &version) {
    qsizetype longest = 0;
    qsizetype digits = 0;
    for (const QChar c : version) {
        digits = isDigit(c) ? digits + 1 : 0;
        longest = std::max(longest, digits);
    }
    return longest;
}

bool isNewer(const QString &left, const QString &right) {
    const qsizetype width = std::max(longestNumber(left), longestNumber(right));
    return padded(left, width).toStdU16String() > padded(right, width).toStdU16String();
}

/// None when the bytes are not UTF-8.
std::optional<QString> textFrom(std::string_view bytes) {
    QStringDecoder decode(QStringDecoder::Utf8,
                          QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    const QString text = decode(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
    return decode.hasError() ? std::nullopt : std::optional(text);
}

/// By the bytes.
AppcastVerdict naiveVerdict(std::string_view body) {
    constexpr std::string_view opening = "<sparkle:shortVersionString>";
    constexpr std::string_view closing = "</sparkle:shortVersionString>";
    const std::size_t start = body.find(opening);
    const std::size_t end = body.find(closing);
    if (!textFrom(body) || start == std::string_view::npos || end == std::string_view::npos ||
        end < start + opening.size())
        return {AppcastVerdict::Kind::couldNotCheck};
    const QString version =
        textFrom(body.substr(start + opening.size(), end - start - opening.size())).value_or(QString());
    if (isNewer(version, currentVersion.toString()))
        return {AppcastVerdict::Kind::newerVersion, version};
    return {AppcastVerdict::Kind::upToDate};
}

/// Whether an element can have it as its text.
bool isXmlText(const QString &text) {
    constexpr qsizetype fewEnough = 500; // equals signs: the reader refuses what looks crowded
    return text.count(u'=') < fewEnough && std::ranges::all_of(text, [](QChar c) {
               return (c >= u' ' || c == u'\t') && c != QChar(0xFFFE) && c != QChar(0xFFFF);
           });
}

/// Makes a feed of which each line of the text is a version, and looks which one comes out.
void checkFeedOf(const QString &text) {
    QString feed = QStringLiteral("<rss><channel>");
    std::optional<AppcastItem> newest;
    for (const QString &line : text.split(u'\n')) {
        if (!isXmlText(line))
            continue;
        feed += QStringLiteral("<item><sparkle:shortVersionString>") + line.toHtmlEscaped() +
                QStringLiteral("</sparkle:shortVersionString></item>");
        const QString version = line.trimmed();
        if (version.isEmpty() || version.size() > longestVersion)
            continue;
        require(std::is_gt(compareVersions(version, currentVersion)) ==
                    isNewer(version, currentVersion.toString()),
                "the order of versions is that of their numbers");
        if (!newest || isNewer(version, newest->displayVersionString))
            newest = AppcastItem{version};
    }
    feed += QStringLiteral("</channel></rss>");
    require(readAppcast(feed.toUtf8()) == Appcast{newest}, "the newest release of a feed is found");
}

} // namespace

const char *checkAppcast(std::string_view input) {
    const QByteArray document(input.data(), static_cast<qsizetype>(input.size()));
    require(judgeAppcast(document, currentVersion) == naiveVerdict(input),
            "the verdict is that on the first version element");
    if (const auto text = textFrom(input))
        checkFeedOf(*text);
    const auto appcast = readAppcast(document);
    if (!appcast)
        return "malformed";
    if (!appcast->newest)
        return "none";
    const QString &version = appcast->newest->displayVersionString;
    require(!version.isEmpty() && version == version.trimmed() && version.size() <= longestVersion,
            "a release has a version that can be shown");
    return "release";
}

} // namespace burnwick::fuzz
