// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "fuzz/Oracles.h"
#include "fuzz/PlainJson.h"
#include "platform/linux/defaults/JsonUserDefaults.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <optional>
#include <string>

namespace burnwick::fuzz {

namespace {

using simdjson::dom::element;
using simdjson::dom::element_type;

const QString key = QStringLiteral("fuzz");
constexpr qint64 value = 9007199254740993; // a double would change it

QByteArray bytesOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::optional<QJsonObject> objectIn(const QByteArray &bytes) {
    const auto document = QJsonDocument::fromJson(bytes);
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

bool haveSameValue(const element &left, const element &right);

bool hasAllOf(const element &left, const element &right) {
    const simdjson::dom::object members = left.get_object().value_unsafe();
    for (const auto &[name, unused] : members) {
        const auto other = lastMember(right, name);
        if (!other || !haveSameValue(*lastMember(left, name), *other))
            return false;
    }
    return true;
}

bool haveSameItems(const simdjson::dom::array &left, const simdjson::dom::array &right) {
    auto other = right.begin();
    for (const auto item : left) {
        if (other == right.end() || !haveSameValue(item, *other))
            return false;
        ++other;
    }
    return other == right.end();
}

bool haveSameValue(const element &left, const element &right) {
    const auto exact = [](const element &number) { return number.type() == element_type::INT64; };
    if (exact(left) && exact(right))
        return left.get_int64().value_unsafe() == right.get_int64().value_unsafe();
    if (left.is_number() && right.is_number())
        return left.get_double().value_unsafe() == right.get_double().value_unsafe();
    if (left.type() != right.type())
        return false;
    switch (left.type()) {
    case element_type::STRING:
        return left.get_string().value_unsafe() == right.get_string().value_unsafe();
    case element_type::BOOL:
        return left.get_bool().value_unsafe() == right.get_bool().value_unsafe();
    case element_type::OBJECT:
        return hasAllOf(left, right) && hasAllOf(right, left);
    case element_type::ARRAY:
        return haveSameItems(left.get_array().value_unsafe(), right.get_array().value_unsafe());
    default:
        return true;
    }
}

/// That the file after the change says what it said before, by a reader that is not the store's.
void checkWrittenFile(const QByteArray &before, const QByteArray &after) {
    const auto view = [](const QByteArray &bytes) {
        return std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    };
    if (before.isEmpty() || !plainReading(view(before)) || mayBeBeyondPlainReading(view(before)))
        return;
    // One array of both, as a reading lasts until the next one.
    const QByteArray both = '[' + before + ',' + after + ']';
    const auto root = plainReading(view(both));
    require(root.has_value(), "the written file is JSON");
    const element old = root->at(0).value();
    const element written = root->at(1).value();
    const simdjson::dom::object settings = old.get_object().value();
    for (const auto &[name, unused] : settings) {
        const auto kept = lastMember(written, name);
        require(name == key.toStdString() || (kept && haveSameValue(*lastMember(old, name), *kept)),
                "no other setting changes");
    }
}

void readAll(const UserDefaults &defaults, const QJsonObject &values) {
    for (const QString &name : values.keys()) {
        const bool isNumber = values.value(name).isDouble();
        require(defaults.contains(name), "every key is found");
        require(defaults.get<bool>(name).has_value() == values.value(name).isBool(), "a bool is a bool");
        require(defaults.get<QString>(name).has_value() == values.value(name).isString(),
                "a string is a string");
        require(defaults.get<double>(name).has_value() == isNumber, "a number is a number");
        require(isNumber || !defaults.get<qint64>(name), "nothing else is an integer");
    }
}

} // namespace

const char *checkSettings(std::string_view input) {
    static const bool quiet = [] {
        QLoggingCategory::setFilterRules(QStringLiteral("burnwick.defaults=false"));
        return true;
    }();
    static_cast<void>(quiet);
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("settings.json"));
    const QByteArray before(input.data(), static_cast<qsizetype>(input.size()));
    {
        QFile file(path);
        require(file.open(QIODevice::WriteOnly) && file.write(before) == before.size(),
                "the file can be written");
    }
    const auto valuesBefore = before.isEmpty() ? QJsonObject() : objectIn(before);
    JsonUserDefaults defaults(path);
    if (!hasByteOrderMark(input))
        readAll(defaults, valuesBefore.value_or(QJsonObject()));
    defaults.set(key, value);

    const QByteArray after = bytesOf(path);
    QJsonObject expected = valuesBefore.value_or(QJsonObject());
    expected.insert(key, value);
    require(objectIn(after) == expected || hasByteOrderMark(input),
            "a change changes its key and nothing else");
    require(JsonUserDefaults(path).get<qint64>(key) == value, "the value is read back");
    const QStringList names = QDir(directory.path()).entryList(QDir::Files | QDir::Hidden);
    require(names.size() == (valuesBefore ? 1 : 2), "no temporary file remains");
    if (!valuesBefore) {
        require(bytesOf(directory.filePath(names.last())) == before,
                "an unreadable file is kept whole under another name");
        return "setaside";
    }
    if (!hasByteOrderMark(input))
        checkWrittenFile(before, after);
    return "kept";
}

} // namespace burnwick::fuzz
