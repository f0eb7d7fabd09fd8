// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QJsonObject>
#include <QString>

#include <concepts>
#include <optional>

namespace burnwick {

/// The types of values that the store distinguishes.
template <typename T>
concept StorableValue =
    std::same_as<T, bool> || std::same_as<T, qint64> || std::same_as<T, double> || std::same_as<T, QString>;

/// The program's settings and other small values: one flat JSON object in one file.
///
/// Reads the file at construction and again before each write, which changes one key only: unknown keys, and
/// edits made while the program runs, stay. Locks the file's folder from that reading to the write, against
/// other processes with such a store; after half a second it writes without the lock. Replaces the file as a
/// whole, with mode 0600, and follows links. Logs each failure once and reports none to the caller:
/// - a missing or empty file means no settings;
/// - a file without a JSON object is renamed to "<name>.corrupt-<UTC time>", and the next change writes all
///   values known so far;
/// - an unreadable file is never changed, and an unwritable one keeps its contents. Changes then stay in
///   memory until a later change succeeds, which writes all of them.
///
/// Numbers are exact as 64-bit integers and as doubles. Main thread only.
class UserDefaults final {
public:
    /// With read-only access, never writes or renames the file: changes stay in memory.
    enum class Access { readWrite, readOnly };

    explicit UserDefaults(QString path, Access access = Access::readWrite);

    /// Returns "burnwick/burnwick.json" in the user's configuration folder ($XDG_CONFIG_HOME).
    [[nodiscard]] static QString defaultPath();

    /// Returns the value under the key; null when it is missing or has another type. Integers are also
    /// doubles, and whole doubles are also integers.
    template <StorableValue T>
    [[nodiscard]] std::optional<T> get(const QString &key) const {
        const QJsonValue value = m_values.value(key);
        if constexpr (std::same_as<T, bool>)
            return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
        else if constexpr (std::same_as<T, double>)
            return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
        else if constexpr (std::same_as<T, QString>)
            return value.isString() ? std::optional(value.toString()) : std::nullopt;
        else // Only an integer ignores both defaults.
            return value.toInteger(0) == value.toInteger(1) ? std::optional(value.toInteger()) : std::nullopt;
    }
    /// Whether there is a value under the key, of any type.
    [[nodiscard]] bool contains(const QString &key) const { return m_values.contains(key); }

    /// Stores the value. Does not write a file that already contains it.
    template <StorableValue T>
    void set(const QString &key, const T &value) {
        change(key, QJsonValue(value));
    }

private:
    void change(const QString &key, const QJsonValue &value);
    void save();
    [[nodiscard]] bool setAside(const QString &file, const QString &problem);
    void report(const QString &problem);

    QString m_path;
    Access m_access;
    QJsonObject m_values;
    QHash<QString, QJsonValue> m_unsaved; ///< changes not yet in the file
    QString m_reported;                   ///< the last problem logged
};

} // namespace burnwick
