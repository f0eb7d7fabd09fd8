// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <concepts>
#include <optional>
#include <utility>
#include <variant>

namespace burnwick {

/// The types of values that the store distinguishes.
template <typename T>
concept StorableValue = std::same_as<T, bool> || std::same_as<T, qint64> || std::same_as<T, double> ||
    std::same_as<T, QString> || std::same_as<T, QStringList>;

/// The program's settings and other small values, which the system keeps for each user. Numbers are exact as
/// 64-bit integers and as doubles. Failures are logged and not returned: changes then stay in memory. Main
/// thread only.
class UserDefaults {
public:
    /// With read-only access, changes stay in memory.
    enum class Access { readWrite, readOnly };
    /// A whole number is an integer.
    using Value = std::variant<bool, qint64, double, QString, QStringList>;

    virtual ~UserDefaults() = default;

    /// Returns the value under the key; null when it is missing or has another type. Integers are also
    /// doubles, and whole doubles are also integers.
    template <StorableValue T>
    [[nodiscard]] std::optional<T> get(const QString &key) const {
        const auto stored = value(key);
        if (!stored)
            return std::nullopt;
        if (const auto *same = std::get_if<T>(&*stored))
            return *same;
        if constexpr (std::same_as<T, double>) {
            if (const auto *integer = std::get_if<qint64>(&*stored))
                return static_cast<double>(*integer);
        }
        return std::nullopt;
    }
    /// Whether there is a value under the key, of any type.
    [[nodiscard]] virtual bool contains(const QString &key) const = 0;

    /// Stores the value, unless the store already contains it.
    template <StorableValue T>
    void set(const QString &key, T value) {
        setValue(key, Value(std::move(value)));
    }

protected:
    /// Returns the value under the key; null when it is missing or of a type that Value lacks.
    [[nodiscard]] virtual std::optional<Value> value(const QString &key) const = 0;
    virtual void setValue(const QString &key, const Value &value) = 0;
};

} // namespace burnwick
