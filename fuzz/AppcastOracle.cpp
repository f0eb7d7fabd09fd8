// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "fuzz/Oracles.h"
#include "update/Appcast.h"

#include <QStringDecoder>
#include <QStringList>

#include <algorithm>
#include <optional>

namespace burnwick::fuzz {

namespace {

constexpr QStringView currentVersion = u"1.9.2";

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

/// Pads each number to that width, so that the order of texts is the order of versions.
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

/// Returns nothing when the bytes are not UTF-8.
std::optional<QString> textFrom(std::string_view bytes) {
    QStringDecoder decode(QStringDecoder::Utf8,
                          QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    const QString text = decode(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
    return decode.hasError() ? std::nullopt : std::optional(text);
}

/// Returns the version element's text by a search in the bytes; absent without the element.
std::optional<QString> firstVersion(std::string_view body) {
    constexpr std::string_view opening = "<sparkle:shortVersionString>";
    constexpr std::string_view closing = "</sparkle:shortVersionString>";
    const std::size_t start = body.find(opening);
    const std::size_t end = body.find(closing);
    if (!textFrom(body) || start == std::string_view::npos || end == std::string_view::npos ||
        end < start + opening.size())
        return std::nullopt;
    return textFrom(body.substr(start + opening.size(), end - start - opening.size())).value_or(QString());
}

} // namespace

const char *checkAppcast(std::string_view input) {
    for (const QString &line : textFrom(input).value_or(QString()).split(u'\n'))
        require(isNewerVersion(line, currentVersion) == isNewer(line, currentVersion.toString()) &&
                    isNewerVersion(currentVersion, line) == isNewer(currentVersion.toString(), line),
                "the order of versions is that of their numbers");

    const auto version = firstVersion(input);
    const QByteArray body(input.data(), static_cast<qsizetype>(input.size()));
    const AppcastVerdict verdict = judgeAppcast(body, currentVersion);
    using Kind = AppcastVerdict::Kind;
    constexpr qsizetype longestVersion = 64;
    if (!version || version->size() > longestVersion) {
        require(verdict.kind == Kind::couldNotCheck,
                "the check fails without a version element, or with a long one");
        return "failed";
    }
    const bool newer = isNewer(*version, currentVersion.toString());
    require(verdict.kind == (newer ? Kind::newerVersion : Kind::upToDate) &&
                verdict.version == (newer ? *version : QString()),
            "the verdict is that on the first version element");
    return newer ? "newer" : "current";
}

} // namespace burnwick::fuzz
