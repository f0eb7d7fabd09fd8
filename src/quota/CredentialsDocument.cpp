// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/CredentialsDocument.h"

#include "model/Timestamp.h"
#include "json/JsonScanner.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QUtf8StringView>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <locale>
#include <sstream>
#include <vector>

// The document belongs to another program, so its text is patched in place. QJsonDocument would not give back
// what it read: it turns integers beyond 64 bits and longer fractions into the nearest double, drops all but
// the last of equal keys, and refuses numbers beyond a double's range and deep nesting.

namespace burnwick {

namespace {

constexpr std::int64_t nanosecondsPerMillisecond = 1'000'000;
constexpr int fractionDigits = 6; ///< of a millisecond, in nanoseconds

/// The value of a key as it stands in the document: its text there.
struct Found {
    std::string_view accessToken;
    std::string_view refreshToken;
    std::string_view expiresAt;
    bool hasMembers = false;
    const char *end = nullptr; ///< the closing brace

    std::string_view *named(std::string_view key) {
        if (key == "accessToken")
            return &accessToken;
        if (key == "refreshToken")
            return &refreshToken;
        return key == "expiresAt" ? &expiresAt : nullptr;
    }
};

bool skipValue(JsonScanner &json, std::string_view &value) {
    const char *begin = json.rest().data();
    if (!json.skipValue())
        return false;
    value = {begin, static_cast<std::size_t>(json.rest().data() - begin)};
    return true;
}

bool scanLogin(JsonScanner &json, std::optional<Found> &found) {
    found.reset();
    if (json.peek() != '{')
        return json.skipValue();
    found.emplace();
    const char *begin = json.rest().data() + 1;
    const bool read = json.readObject([&](std::string_view key) {
        auto *value = found->named(key);
        return value != nullptr ? skipValue(json, *value) : json.skipValue();
    });
    found->end = json.rest().data() - 1;
    // By the text, as not every key is heard of above.
    found->hasMembers =
        read && std::string_view(begin, found->end).find_first_not_of(" \t\r\n") != std::string_view::npos;
    return read;
}

/// Empty views where a key is missing; absent when there is no login in the document.
std::optional<Found> scanDocument(std::string_view document) {
    if (!QUtf8StringView(document).isValidUtf8())
        return std::nullopt;
    std::optional<Found> found;
    JsonScanner json(document);
    json.skipSpace();
    const bool read = json.readObject([&](std::string_view key) {
        return key == "claudeAiOauth" ? scanLogin(json, found) : json.skipValue();
    });
    json.skipSpace();
    return read && json.rest().empty() ? found : std::nullopt;
}

std::optional<std::string> textFrom(std::string_view value) {
    std::string text;
    if (JsonScanner(value).readString(&text) != JsonScanner::Text::valid)
        return std::nullopt;
    return text;
}

/// Exactly, where a double would be off by up to 122 ns; absent for a number with an exponent or too many
/// digits.
std::optional<Instant> exactInstantFrom(std::string_view number) {
    const auto point = std::min(number.find('.'), number.size());
    std::string digits(number.substr(std::min(point + 1, number.size())));
    digits.resize(fractionDigits, '0');
    digits.insert(0, number.substr(0, point));
    std::int64_t nanoseconds = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), nanoseconds);
    if (error != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    return Instant(std::chrono::nanoseconds(nanoseconds));
}

/// An instant that does not fit becomes the first or last one that does: it stays long past or far ahead.
Instant nearestInstantFrom(std::string_view number) {
    // In the classic locale, as not every user's decimal sign is a point. Beyond a double's range it gives
    // the largest one.
    std::istringstream in{std::string(number)};
    in.imbue(std::locale::classic());
    double milliseconds = 0;
    in >> milliseconds;
    const double nanoseconds = milliseconds * double{nanosecondsPerMillisecond};
    constexpr double limit = 0x1p63;
    if (nanoseconds >= limit)
        return Instant::max();
    if (nanoseconds < -limit)
        return Instant::min();
    return Instant(std::chrono::nanoseconds(std::llround(nanoseconds)));
}

std::optional<Instant> instantFrom(std::string_view value) {
    if (JsonScanner(value).skipNumber()) {
        const bool exponent = value.find_first_of("eE") != std::string_view::npos;
        const auto exact = exponent ? std::nullopt : exactInstantFrom(value);
        return exact ? *exact : nearestInstantFrom(value);
    }
    const auto text = textFrom(value);
    const auto timestamp = text ? parseTimestamp(*text) : std::nullopt;
    if (!timestamp || timestamp->fractionDigits > 0)
        return std::nullopt;
    return timestamp->instant;
}

std::string jsonFrom(std::string_view text) {
    // A text alone is no document for Qt; in an array it is.
    const QJsonArray array{QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()))};
    const QByteArray json = QJsonDocument(array).toJson(QJsonDocument::Compact);
    return json.mid(1, json.size() - 2).toStdString();
}

/// Milliseconds since 1970.
std::string jsonFrom(Instant instant) {
    const std::int64_t nanoseconds = instant.time_since_epoch().count();
    char fraction[16];
    std::snprintf(fraction, sizeof fraction, ".%06lld",
                  std::abs(static_cast<long long>(nanoseconds % nanosecondsPerMillisecond)));
    const std::int64_t milliseconds = nanoseconds / nanosecondsPerMillisecond;
    std::string number = nanoseconds < 0 ? "-" : "";
    number += std::to_string(std::abs(milliseconds));
    number += fraction;
    number.erase(number.find_last_not_of('0') + 1);
    if (number.ends_with('.'))
        number.pop_back();
    return number;
}

/// What to put into the document in place of a value, or in front of the closing brace.
struct Patch {
    std::string_view value;
    std::string replacement;
};

Patch patchFor(std::string_view key, std::string_view value, std::string replacement, Found &found) {
    if (value.data() != nullptr)
        return {value, std::move(replacement)};
    const std::string_view comma = found.hasMembers ? "," : "";
    found.hasMembers = true;
    return {std::string_view(found.end, found.end),
            std::string(comma).append("\"").append(key).append("\":").append(replacement)};
}

} // namespace

std::optional<OAuthCredentials> credentialsFromDocument(std::string_view document) {
    const auto found = scanDocument(document);
    if (!found)
        return std::nullopt;
    const auto accessToken = textFrom(found->accessToken);
    if (!accessToken || accessToken->empty())
        return std::nullopt;
    return OAuthCredentials{*accessToken, textFrom(found->refreshToken), instantFrom(found->expiresAt)};
}

std::optional<std::string> patchedDocument(std::string_view document, std::string_view accessToken,
                                           const std::optional<std::string> &refreshToken,
                                           const std::optional<Instant> &expiresAt) {
    auto found = scanDocument(document);
    if (!found || !QUtf8StringView(accessToken).isValidUtf8() ||
        (refreshToken && !QUtf8StringView(*refreshToken).isValidUtf8()))
        return std::nullopt;

    std::vector<Patch> patches{patchFor("accessToken", found->accessToken, jsonFrom(accessToken), *found)};
    if (refreshToken)
        patches.push_back(patchFor("refreshToken", found->refreshToken, jsonFrom(*refreshToken), *found));
    if (expiresAt)
        patches.push_back(patchFor("expiresAt", found->expiresAt, jsonFrom(*expiresAt), *found));
    // Stable: new keys share one place.
    std::ranges::stable_sort(patches, {}, [](const Patch &patch) { return patch.value.data(); });

    std::string result;
    const char *copied = document.data();
    for (const auto &patch : patches) {
        result.append(copied, patch.value.data()).append(patch.replacement);
        copied = patch.value.data() + patch.value.size();
    }
    return result.append(copied, document.data() + document.size());
}

} // namespace burnwick
