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

    /// Returns the owner's unique name; empty when there is no owner, and before the bus has replied.
    [[nodiscard]] QString name() const { return m_name.value_or(QString()); }

Q_SIGNALS:
    /// Emitted first when the bus has replied. Empty: the name has no owner, or there is no bus.
    void changed(const QString &name);

private:
    void setName(const QString &name);

    QDBusServiceWatcher m_changes;
    std::optional<QString> m_name; ///< absent before the first reply
};

} // namespace burnwick
