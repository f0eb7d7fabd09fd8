// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/statusitem/OneEntryMenu.h"

#include <QtDBus/QDBusMetaType>

#include <utility>

namespace burnwick {

namespace {

constexpr int rootId = 0;
constexpr int openId = 1;
constexpr uint revision = 1;

QVariantMap propertiesOf(int id) {
    if (id == rootId)
        return {{QStringLiteral("children-display"), QStringLiteral("submenu")}};
    if (id == openId)
        return {{QStringLiteral("label"), QStringLiteral("Open Burnwick")}};
    return {};
}

} // namespace

OneEntryMenu::OneEntryMenu(std::function<void()> chosen)
    : m_chosen(std::move(chosen)) {}

uint OneEntryMenu::GetLayout(int parentId, int depth, const QStringList & /*names*/, DBusMenuLayout &layout) {
    layout = {parentId, propertiesOf(parentId), {}};
    if (parentId == rootId && depth != 0) {
        const DBusMenuLayout open{openId, propertiesOf(openId), {}};
        layout.children.append(QDBusVariant(QVariant::fromValue(open)));
    }
    Q_EMIT layoutRead();
    return revision;
}

QList<DBusMenuEntry> OneEntryMenu::GetGroupProperties(const QList<int> &ids, const QStringList & /*names*/) {
    // An empty list means every entry.
    const QList<int> asked = ids.isEmpty() ? QList<int>{rootId, openId} : ids;
    QList<DBusMenuEntry> entries;
    for (const int id : asked)
        entries.append({id, propertiesOf(id)});
    return entries;
}

QDBusVariant OneEntryMenu::GetProperty(int id, const QString &name) {
    // An empty variant cannot be sent.
    return QDBusVariant(propertiesOf(id).value(name, QString()));
}

void OneEntryMenu::Event(int id, const QString &type, const QDBusVariant & /*data*/, uint /*timestamp*/) {
    if (id == openId && type == QLatin1String("clicked"))
        m_chosen();
}

QList<int> OneEntryMenu::EventGroup(const QList<DBusMenuEvent> &events) {
    QList<int> unknownIds;
    for (const DBusMenuEvent &event : events) {
        if (event.id == rootId || event.id == openId)
            Event(event.id, event.type, event.data, event.timestamp);
        else
            unknownIds.append(event.id);
    }
    return unknownIds;
}

bool OneEntryMenu::AboutToShow(int /*id*/) {
    return false;
}

QList<int> OneEntryMenu::AboutToShowGroup(const QList<int> & /*ids*/, QList<int> &unknownIds) {
    unknownIds.clear();
    return {};
}

void registerMenuTypes() {
    qDBusRegisterMetaType<DBusMenuLayout>();
    qDBusRegisterMetaType<DBusMenuEntry>();
    qDBusRegisterMetaType<QList<DBusMenuEntry>>();
    qDBusRegisterMetaType<DBusMenuEvent>();
    qDBusRegisterMetaType<QList<DBusMenuEvent>>();
    qDBusRegisterMetaType<QList<QDBusVariant>>();
}

} // namespace burnwick
