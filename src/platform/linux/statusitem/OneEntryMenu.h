// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/bus/DBusStruct.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>
#include <QtDBus/QDBusVariant>

#include <functional>

namespace burnwick {

/// A menu entry with its children, each of them a DBusMenuLayout in a variant: (ia{sv}av).
struct DBusMenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<QDBusVariant> children;

    static constexpr auto fields =
        std::tuple(&DBusMenuLayout::id, &DBusMenuLayout::properties, &DBusMenuLayout::children);
};

/// (ia{sv})
struct DBusMenuEntry {
    int id = 0;
    QVariantMap properties;

    static constexpr auto fields = std::tuple(&DBusMenuEntry::id, &DBusMenuEntry::properties);
};

/// (isvu)
struct DBusMenuEvent {
    int id = 0;
    QString type;
    QDBusVariant data;
    uint timestamp = 0;

    static constexpr auto fields =
        std::tuple(&DBusMenuEvent::id, &DBusMenuEvent::type, &DBusMenuEvent::data, &DBusMenuEvent::timestamp);
};

/// A com.canonical.dbusmenu of one entry, "Open Burnwick", for hosts where a click opens a menu. It never
/// changes, so it does not have the interface's signals.
class OneEntryMenu final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection CONSTANT)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

public:
    /// Calls the handler when the user chooses the entry.
    explicit OneEntryMenu(std::function<void()> chosen);

    [[nodiscard]] uint version() const { return 3; }
    [[nodiscard]] QString status() const { return QStringLiteral("normal"); }
    [[nodiscard]] QString textDirection() const { return QStringLiteral("ltr"); }
    [[nodiscard]] QStringList iconThemePath() const { return {}; }

public Q_SLOTS:
    // Named by the protocol; reference parameters follow the returned value in the reply.
    Q_SCRIPTABLE uint GetLayout(int parentId, int depth, const QStringList &names,
                                burnwick::DBusMenuLayout &layout);
    Q_SCRIPTABLE QList<burnwick::DBusMenuEntry> GetGroupProperties(const QList<int> &ids,
                                                                   const QStringList &names);
    Q_SCRIPTABLE QDBusVariant GetProperty(int id, const QString &name);
    Q_SCRIPTABLE void Event(int id, const QString &type, const QDBusVariant &data, uint timestamp);
    Q_SCRIPTABLE QList<int> EventGroup(const QList<burnwick::DBusMenuEvent> &events);
    Q_SCRIPTABLE bool AboutToShow(int id);
    Q_SCRIPTABLE QList<int> AboutToShowGroup(const QList<int> &ids, QList<int> &unknownIds);

Q_SIGNALS:
    /// Emitted when the host reads the menu. Not sent over the bus.
    void layoutRead();

private:
    std::function<void()> m_chosen;
};

/// Registers the types with QtDBus. Call it before a menu is exported or read.
void registerMenuTypes();

} // namespace burnwick
