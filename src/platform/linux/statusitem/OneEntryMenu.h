// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>
#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusVariant>

#include <functional>

namespace burnwick {

/// A menu entry with its children, each of them a DBusMenuLayout in a variant: (ia{sv}av).
struct DBusMenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<QDBusVariant> children;
};

/// (ia{sv})
struct DBusMenuEntry {
    int id = 0;
    QVariantMap properties;
};
using DBusMenuEntries = QList<DBusMenuEntry>;

/// (isvu)
struct DBusMenuEvent {
    int id = 0;
    QString type;
    QDBusVariant data;
    uint timestamp = 0;
};
using DBusMenuEvents = QList<DBusMenuEvent>;

/// A com.canonical.dbusmenu of one entry, "Open Burnwick", for hosts that turn the click into a menu.
/// It never changes, so it has none of the interface's signals.
class OneEntryMenu final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection CONSTANT)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

public:
    explicit OneEntryMenu(std::function<void()> chosen);

    [[nodiscard]] uint version() const { return 3; }
    [[nodiscard]] QString status() const;
    [[nodiscard]] QString textDirection() const;
    [[nodiscard]] QStringList iconThemePath() const { return {}; }

public Q_SLOTS:
    // Named by the protocol; what is returned by reference follows the returned value.
    Q_SCRIPTABLE uint GetLayout(int parentId, int depth, const QStringList &names,
                                burnwick::DBusMenuLayout &layout);
    Q_SCRIPTABLE burnwick::DBusMenuEntries GetGroupProperties(const QList<int> &ids,
                                                              const QStringList &names);
    Q_SCRIPTABLE QDBusVariant GetProperty(int id, const QString &name);
    Q_SCRIPTABLE void Event(int id, const QString &type, const QDBusVariant &data, uint timestamp);
    Q_SCRIPTABLE QList<int> EventGroup(const burnwick::DBusMenuEvents &events);
    Q_SCRIPTABLE bool AboutToShow(int id);
    Q_SCRIPTABLE QList<int> AboutToShowGroup(const QList<int> &ids, QList<int> &unknownIds);

Q_SIGNALS:
    /// The host reads the menu. Not on the bus.
    void layoutRead();

private:
    std::function<void()> m_chosen;
};

/// Makes the types known to QtDBus; before a menu is exported or read.
void registerMenuTypes();

QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuLayout &layout);
const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuLayout &layout);
QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuEntry &entry);
const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuEntry &entry);
QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuEvent &event);
const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuEvent &event);

} // namespace burnwick

Q_DECLARE_METATYPE(burnwick::DBusMenuLayout)
Q_DECLARE_METATYPE(burnwick::DBusMenuEntry)
Q_DECLARE_METATYPE(burnwick::DBusMenuEntries)
Q_DECLARE_METATYPE(burnwick::DBusMenuEvent)
Q_DECLARE_METATYPE(burnwick::DBusMenuEvents)
