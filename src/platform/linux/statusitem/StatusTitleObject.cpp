// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/statusitem/StatusTitleObject.h"

#include "platform/linux/statusitem/NotifierState.h"

#include <QtCore/QMetaProperty>

#include <chrono>
#include <utility>

namespace burnwick {

namespace {

QString nameOf(TitleSegment::Weight weight) {
    switch (weight) {
    case TitleSegment::Weight::semibold:
        return QStringLiteral("semibold");
    case TitleSegment::Weight::heavy:
        return QStringLiteral("heavy");
    case TitleSegment::Weight::regular:
        break;
    }
    return QStringLiteral("regular");
}

qlonglong unixSeconds(Instant instant) {
    return std::chrono::floor<std::chrono::seconds>(instant.time_since_epoch()).count();
}

} // namespace

StatusTitleObject::StatusTitleObject(StatusItemContent content, StatusItem::ActivateHandler handler)
    : m_content(std::move(content))
    , m_handler(std::move(handler)) {}

QVariantMap StatusTitleObject::setContent(const StatusItemContent &content) {
    const QVariantMap before = properties();
    m_content = content;
    QVariantMap changed = properties();
    changed.removeIf([&before](const auto &property) { return before.value(property.key()) == *property; });
    return changed;
}

QList<TitlePart> StatusTitleObject::title() const {
    QList<TitlePart> parts;
    for (const TitleSegment &segment : m_content.title) {
        parts.append({QString::fromStdString(segment.text), nameOf(segment.weight), segment.dimmed,
                      segment.color ? QString::fromStdString(hexOf(*segment.color)) : QString()});
    }
    return parts;
}

QString StatusTitleObject::description() const {
    return accessibleDescriptionOf(m_content);
}

QList<TitleLimit> StatusTitleObject::limits() const {
    QList<TitleLimit> limits;
    for (const LimitRow &row : m_content.limits) {
        limits.append({QString::fromStdString(row.name), row.usedPct,
                       QString::fromStdString(hexOf(colorOf(statusIndicatorForUsage(row.usedPct)))),
                       row.resetsAt ? unixSeconds(*row.resetsAt) : 0});
    }
    return limits;
}

QStringList StatusTitleObject::remarks() const {
    QStringList remarks;
    for (const std::string &remark : m_content.remarks)
        remarks.append(QString::fromStdString(remark));
    return remarks;
}

QVariantMap StatusTitleObject::properties() const {
    QVariantMap values;
    for (int i = staticMetaObject.propertyOffset(); i < staticMetaObject.propertyCount(); ++i) {
        const QMetaProperty property = staticMetaObject.property(i);
        values.insert(QLatin1String(property.name()), property.read(this));
    }
    return values;
}

} // namespace burnwick
