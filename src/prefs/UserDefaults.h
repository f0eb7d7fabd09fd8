// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QJsonObject>
#include <QString>

#include <concepts>
#include <optional>

namespace burnwick {

/// The types that the store keeps apart.
template <typename T>
concept StorableValue =
    std::same_as<T, bool> || std::same_as<T, qint64> || std::same_as<T, double> || std::same_as<T, QString>;

/// The program's settings and small memories: one flat JSON object in one file.
///
/// The file is read at construction and again before each write, which changes one key only: keys that are
/// unknown here, and edits made by others while the program runs, stay. From that reading to the replacing
/// the file's folder is locked, for other processes with such a store; a writer that does not get the lock
/// within half a second, or cannot lock the folder, writes without it. The file is replaced as a whole,
/// through links, with mode 0600. Nothing is reported to the caller; what goes wrong is logged once:
/// - a missing or empty file means no settings;
/// - a file that holds no JSON object is renamed to "<name>.corrupt-<UTC time>", and the values known so far
///   are written anew with the next change;
/// - a file that cannot be read is left alone, and one that cannot be written keeps its contents. Changes
///   then live in memory and are stored together with the next change that succeeds.
///
/// Numbers are exact as 64-bit integers and as doubles. Main thread only.
class UserDefaults final {
public:
    /// With read-only access nothing is written or renamed, whatever the file holds: changes live in memory.
    enum class Access { readWrite, readOnly };

    explicit UserDefaults(QString path, Access access = Access::readWrite);

    /// "burnwick/burnwick.json" in the user's folder for configuration ($XDG_CONFIG_HOME).
    [[nodiscard]] static QString defaultPath();

    /// The value under the key; none when it is missing or of another type. An integer reads as a double too,
    /// and a whole number as an integer.
    template <StorableValue T>
    [[nodiscard]] std::optional<T> get(const QString &key) const;
    /// Whether there is a value under the key, of whatever type.
    [[nodiscard]] bool contains(const QString &key) const { return m_values.contains(key); }

    /// Stores the value; the file is not touched when it already holds it.
    template <StorableValue T>
    void set(const QString &key, const T &value) {
        change(key, QJsonValue(value));
    }
    void remove(const QString &key);

private:
    void change(const QString &key, const QJsonValue &valueOrUndefined);
    void save();
    [[nodiscard]] bool setAside(const QString &file, const QString &problem);
    void report(const QString &problem);

    QString m_path;
    Access m_access;
    QJsonObject m_values;
    QHash<QString, QJsonValue> m_unsaved; ///< changes not in the file yet; undefined stands for a removal
    QString m_reported;                   ///< the trouble already logged
};

template <>
std::optional<bool> UserDefaults::get<bool>(const QString &key) const;
template <>
std::optional<qint64> UserDefaults::get<qint64>(const QString &key) const;
template <>
std::optional<double> UserDefaults::get<double>(const QString &key) const;
template <>
std::optional<QString> UserDefaults::get<QString>(const QString &key) const;

} // namespace burnwick
