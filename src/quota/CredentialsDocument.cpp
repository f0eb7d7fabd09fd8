// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/CredentialsDocument.h"

#include "model/Timestamp.h"
#include "json/JsonScanner.h"

#include <QByteArrayView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>
#include <QUtf8StringView>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <vector>

// The document belongs to another program, so its text is patched in place. QJsonDocument does not write what
// it has read: it rounds integers beyond 64 bits and long fractions to the nearest double, drops all but the
// last of equal keys, and rejects numbers beyond a double's range and deep nesting.

namespace burnwick {

namespace {

/// The login in a document: the text of each value, null when its key is missing.
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
    // From the text, because the callback is not called for every key.
    found->hasMembers =
        read && std::string_view(begin, found->end).find_first_not_of(" \t\r\n") != std::string_view::npos;
    return read;
}

/// Null when the document is malformed or has no login.
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
    std::string unescaped;
    const auto text = JsonScanner(value).readString(unescaped);
    return text ? std::optional<std::string>(*text) : std::nullopt;
}

/// Clamps to the range of Instant. Keeps whole milliseconds exact; a double of nanoseconds would round them.
Instant instantAt(double milliseconds) {
    using Fraction = std::chrono::duration<double, std::milli>;
    constexpr auto limit = static_cast<double>(
        std::chrono::floor<std::chrono::milliseconds>(Instant::max()).time_since_epoch().count());
    const double limited = std::clamp(milliseconds, -limit, limit);
    const double whole = std::floor(limited);
    return Instant(std::chrono::milliseconds(std::llround(whole))) +
           std::chrono::round<std::chrono::nanoseconds>(Fraction(limited - whole));
}

std::optional<Instant> instantFrom(std::string_view value) {
    if (JsonScanner(value).skipNumber()) {
        bool fits = false;
        const QByteArrayView number(value.data(), static_cast<qsizetype>(value.size()));
        const double milliseconds = number.toDouble(&fits);
        return fits ? std::optional(instantAt(milliseconds)) : std::nullopt;
    }
    const auto text = textFrom(value);
    return text && text->find('.') == std::string::npos ? parseTimestamp(*text) : std::nullopt;
}

std::string jsonFrom(std::string_view text) {
    // A JSON document of Qt needs an array or object as its root.
    const QJsonArray array{QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()))};
    const QByteArray json = QJsonDocument(array).toJson(QJsonDocument::Compact);
    return json.mid(1, json.size() - 2).toStdString();
}

/// Milliseconds since 1970.
std::string jsonFrom(Instant instant) {
    const auto whole = std::chrono::time_point_cast<std::chrono::milliseconds>(instant);
    const std::chrono::duration<double, std::milli> fraction = instant - whole;
    const double milliseconds = static_cast<double>(whole.time_since_epoch().count()) + fraction.count();
    return QByteArray::number(milliseconds, 'f', QLocale::FloatingPointShortest).toStdString();
}

/// Replaces a value. An empty value before the closing brace means an insertion there.
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
    // Stable, because new keys have the same position.
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
