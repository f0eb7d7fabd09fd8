// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLatin1String>
#include <QString>

#include <optional>

namespace burnwick {

/// The document in the bytes; throws DecodeError when they are not JSON, with an array or an object at the
/// root.
[[nodiscard]] QJsonDocument parseJson(const QByteArray &bytes);
/// Like parseJson(), and throws DecodeError for an array.
[[nodiscard]] QJsonObject parseJsonObject(const QByteArray &bytes);

/// The member of that type; throw DecodeError when it is missing, null or of another type.
[[nodiscard]] double requiredNumber(const QJsonObject &object, QLatin1String key);
[[nodiscard]] bool requiredBool(const QJsonObject &object, QLatin1String key);
[[nodiscard]] QString requiredString(const QJsonObject &object, QLatin1String key);
[[nodiscard]] QJsonObject requiredObject(const QJsonObject &object, QLatin1String key);

/// None when the member is missing or null; throw DecodeError when it is of another type.
[[nodiscard]] std::optional<QString> optionalString(const QJsonObject &object, QLatin1String key);
[[nodiscard]] std::optional<QJsonObject> optionalObject(const QJsonObject &object, QLatin1String key);

} // namespace burnwick
