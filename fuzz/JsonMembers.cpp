// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "fuzz/JsonMembers.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace burnwick::fuzz {

namespace {

constexpr std::string_view blanks = " \t\r\n";

/// Returns the index behind the string that begins there.
std::size_t stringEnd(std::string_view text, std::size_t at) {
    for (++at; text.at(at) != '"'; ++at)
        at += text.at(at) == '\\' ? 1 : 0;
    return at + 1;
}

/// Returns the index of the comma or bracket behind the value that begins there.
std::size_t valueEnd(std::string_view text, std::size_t at) {
    for (int depth = 0;; ++at) {
        const char c = text.at(at);
        if (depth == 0 && (c == ',' || c == '}' || c == ']'))
            return at;
        if (c == '"')
            at = stringEnd(text, at) - 1;
        else if (c == '{' || c == '[')
            ++depth;
        else if (c == '}' || c == ']')
            --depth;
    }
}

QString meaning(std::string_view jsonString) {
    const std::string_view behindQuote = jsonString.substr(1);
    // With a full stop before it, because Qt drops a byte order mark at the beginning.
    const QByteArray array = "[\"." + QByteArray(behindQuote.data(), qsizetype(behindQuote.size())) + ']';
    return QJsonDocument::fromJson(array).array().at(0).toString().mid(1);
}

} // namespace

std::vector<JsonMember> jsonMembers(std::string_view object) {
    std::vector<JsonMember> members;
    std::size_t at = object.find('{') + 1;
    while (true) {
        at = object.find_first_not_of(blanks, at);
        if (object.at(at) == '}')
            return members;
        if (object.at(at) == ',')
            at = object.find_first_not_of(blanks, at + 1);
        const std::size_t keyEnd = stringEnd(object, at);
        const QString key = meaning(object.substr(at, keyEnd - at));
        const std::size_t begin = object.find_first_not_of(blanks, object.find(':', keyEnd) + 1);
        at = valueEnd(object, begin);
        const std::size_t last = object.find_last_not_of(blanks, at - 1);
        members.push_back({key, object.substr(begin, last + 1 - begin)});
    }
}

} // namespace burnwick::fuzz
