// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLatin1String>
#include <QString>

#include <optional>
#include <stdexcept>

namespace burnwick {

/// A response body without the expected JSON. The text names the key and the problem, but no value.
class DecodeError final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Returns the array or object in the bytes; throws DecodeError for malformed JSON and other values.
[[nodiscard]] QJsonDocument parseJson(const QByteArray &bytes);
/// Returns the object in the bytes; throws DecodeError for malformed JSON and other values.
[[nodiscard]] QJsonObject parseJsonObject(const QByteArray &bytes);

/// Return the member; throw DecodeError for one that is missing, null or of another type.
[[nodiscard]] double requiredNumber(const QJsonObject &object, QLatin1String key);
[[nodiscard]] bool requiredBool(const QJsonObject &object, QLatin1String key);
[[nodiscard]] QString requiredString(const QJsonObject &object, QLatin1String key);
[[nodiscard]] QJsonObject requiredObject(const QJsonObject &object, QLatin1String key);

/// Return the member, or null for one that is missing or null; throw DecodeError for one of another type.
[[nodiscard]] std::optional<QString> optionalString(const QJsonObject &object, QLatin1String key);
[[nodiscard]] std::optional<QJsonObject> optionalObject(const QJsonObject &object, QLatin1String key);

} // namespace burnwick
