// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "json/JsonReading.h"

#include <QJsonParseError>
#include <QJsonValue>

#include <string>

namespace burnwick {

namespace {

QJsonValue required(const QJsonObject &object, QLatin1String key, QJsonValue::Type type) {
    QJsonValue value = object.value(key);
    if (value.type() == type)
        return value;
    const std::string name(key.data(), static_cast<std::size_t>(key.size()));
    throw DecodeError(value.isUndefined() ? "\"" + name + "\" is missing"
                                          : "\"" + name + "\" is of another type");
}

std::optional<QJsonValue> optional(const QJsonObject &object, QLatin1String key, QJsonValue::Type type) {
    const QJsonValue value = object.value(key);
    if (value.isUndefined() || value.isNull())
        return std::nullopt;
    return required(object, key, type);
}

} // namespace

QJsonDocument parseJson(const QByteArray &bytes) {
    QJsonParseError error;
    QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError)
        throw DecodeError("not JSON: " + error.errorString().toStdString());
    return document;
}

QJsonObject parseJsonObject(const QByteArray &bytes) {
    const QJsonDocument document = parseJson(bytes);
    if (!document.isObject())
        throw DecodeError("no object at the root");
    return document.object();
}

double requiredNumber(const QJsonObject &object, QLatin1String key) {
    return required(object, key, QJsonValue::Double).toDouble();
}

bool requiredBool(const QJsonObject &object, QLatin1String key) {
    return required(object, key, QJsonValue::Bool).toBool();
}

QString requiredString(const QJsonObject &object, QLatin1String key) {
    return required(object, key, QJsonValue::String).toString();
}

QJsonObject requiredObject(const QJsonObject &object, QLatin1String key) {
    return required(object, key, QJsonValue::Object).toObject();
}

std::optional<QString> optionalString(const QJsonObject &object, QLatin1String key) {
    const auto value = optional(object, key, QJsonValue::String);
    return value ? std::optional(value->toString()) : std::nullopt;
}

std::optional<QJsonObject> optionalObject(const QJsonObject &object, QLatin1String key) {
    const auto value = optional(object, key, QJsonValue::Object);
    return value ? std::optional(value->toObject()) : std::nullopt;
}

} // namespace burnwick
