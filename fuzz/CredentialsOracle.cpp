// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "fuzz/JsonMembers.h"
#include "fuzz/Oracles.h"
#include "fuzz/PlainJson.h"
#include "quota/CredentialsDocument.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <string>

namespace burnwick::fuzz {

namespace {

using Members = std::vector<JsonMember>;

constexpr const char *accessKey = "accessToken";
constexpr const char *refreshKey = "refreshToken";
constexpr const char *expiryKey = "expiresAt";
const std::string accessToken = "A\"\\/\x01\u00fc";
const std::string refreshToken = "R\U0001F600\t";
const Instant expiry{std::chrono::nanoseconds(1'700'000'000'123'500'000)};

struct Replacement {
    std::optional<std::string> refresh;
    std::optional<Instant> expiry;
};

/// Returns the last member with that key, or the end.
Members::iterator lastOf(Members &members, const char *key) {
    const auto found = std::find_if(members.rbegin(), members.rend(), [key](const JsonMember &member) {
        return member.key == QLatin1String(key);
    });
    return found == members.rend() ? members.end() : std::prev(found.base());
}

/// Removes the member and returns its value as written; empty if absent.
std::string_view take(Members &members, const char *key) {
    const auto found = lastOf(members, key);
    if (found == members.end())
        return {};
    const std::string_view value = found->value;
    members.erase(found);
    return value;
}

QString textOf(std::string_view jsonString) {
    const QByteArray array = '[' + QByteArray(jsonString.data(), qsizetype(jsonString.size())) + ']';
    return QJsonDocument::fromJson(array).array().at(0).toString();
}

void checkPatch(std::string_view document, const std::string &patched, const Replacement &given) {
    Members before = jsonMembers(document);
    Members after = jsonMembers(patched);
    Members login = jsonMembers(take(before, "claudeAiOauth"));
    Members patchedLogin = jsonMembers(take(after, "claudeAiOauth"));
    require(before == after, "nothing outside the login changes");

    take(login, accessKey);
    require(textOf(take(patchedLogin, accessKey)) == QString::fromStdString(accessToken),
            "the access token is inserted");
    if (given.refresh) {
        take(login, refreshKey);
        require(textOf(take(patchedLogin, refreshKey)) == QString::fromStdString(*given.refresh),
                "the refresh token is inserted");
    }
    if (given.expiry) {
        take(login, expiryKey);
        require(take(patchedLogin, expiryKey) == "1700000000123.5", "the expiry is inserted");
    }
    require(login == patchedLogin, "nothing else in the login changes");
}

void checkReading(const std::optional<OAuthCredentials> &before, const std::string &patched,
                  const Replacement &given) {
    const auto after = credentialsFromDocument(patched);
    require(after && after->accessToken == accessToken, "the access token is read back");
    require(!given.refresh || after->refreshToken == given.refresh, "the refresh token is read back");
    require(!given.expiry || after->expiresAt == given.expiry, "the expiry is read back");
    if (before) {
        require(given.refresh || after->refreshToken == before->refreshToken, "the refresh token stays");
        require(given.expiry || after->expiresAt == before->expiresAt, "the expiry stays");
    }
}

} // namespace

const char *checkCredentials(std::string_view input) {
    const auto before = credentialsFromDocument(input);
    bool isPatched = false;
    for (const Replacement &given :
         {Replacement{}, Replacement{refreshToken, std::nullopt}, Replacement{refreshToken, expiry}}) {
        const auto patched = patchedDocument(input, accessToken, given.refresh, given.expiry);
        isPatched = patched.has_value();
        if (!patched)
            continue;
        checkPatch(input, *patched, given);
        checkReading(before, *patched, given);
        require(patchedDocument(*patched, accessToken, given.refresh, given.expiry) == patched,
                "a second patch changes nothing");
    }
    require(isPatched || !before, "a login that is read can be patched");
    if (const auto root = plainReading(input)) {
        const auto login = lastMember(*root, "claudeAiOauth");
        require(isPatched == (login && login->is_object()), "only documents with a login are patched");
    } else {
        require(!isPatched || mayBeBeyondPlainReading(input), "malformed JSON is not patched");
    }
    return isPatched ? "patched" : "refused";
}

} // namespace burnwick::fuzz
