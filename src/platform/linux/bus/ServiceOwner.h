// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusServiceWatcher>

#include <optional>

namespace burnwick {

/// Follows who owns a well-known name on a bus.
class ServiceOwner final : public QObject {
    Q_OBJECT

public:
    ServiceOwner(const QDBusConnection &bus, const QString &service);

    /// Its unique name; empty when nobody is, and before the bus has answered.
    [[nodiscard]] QString name() const { return m_name.value_or(QString()); }

Q_SIGNALS:
    /// First once the bus has answered. Empty: nobody owns the name.
    void changed(const QString &name);

private:
    void setName(const QString &name);

    QDBusServiceWatcher m_changes;
    std::optional<QString> m_name; ///< unset before the first answer
};

} // namespace burnwick
