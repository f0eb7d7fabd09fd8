// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/UserDefaults.h"

#include <QtCore/QHash>
#include <QtCore/QJsonObject>
#include <QtCore/QString>

#include <optional>

namespace burnwick {

/// The settings as one flat JSON object in one file.
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
class JsonUserDefaults final : public UserDefaults {
public:
    /// With read-only access, never writes or renames the file.
    explicit JsonUserDefaults(QString path, Access access = Access::readWrite);

    [[nodiscard]] bool contains(const QString &key) const override { return m_values.contains(key); }

private:
    [[nodiscard]] std::optional<Value> value(const QString &key) const override;
    void setValue(const QString &key, const Value &value) override;
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
