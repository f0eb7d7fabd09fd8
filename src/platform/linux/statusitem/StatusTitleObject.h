// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/bus/DBusStruct.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

#include <tuple>

namespace burnwick {

/// A segment of the title: (ssbs).
struct TitlePart {
    QString text;
    QString weight; ///< "regular", "semibold" or "heavy"
    bool dimmed = false;
    QString color; ///< "#rrggbb"; empty for the bar's own text colour

    static constexpr auto fields =
        std::tuple(&TitlePart::text, &TitlePart::weight, &TitlePart::dimmed, &TitlePart::color);
    bool operator==(const TitlePart &) const = default;
};

/// A limit with its bar: (sdsx).
struct TitleLimit {
    QString name;
    double percent = 0;     ///< may exceed 100
    QString color;          ///< of the bar, "#rrggbb"
    qlonglong resetsAt = 0; ///< seconds since 1970; 0 while unknown

    static constexpr auto fields =
        std::tuple(&TitleLimit::name, &TitleLimit::percent, &TitleLimit::color, &TitleLimit::resetsAt);
    bool operator==(const TitleLimit &) const = default;
};

/// Implements the D-Bus interface com.burnwick.Burnwick.StatusTitle1, by which a shell draws the title. It
/// has figures and the names of limits, and nothing about projects or the account.
class StatusTitleObject final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.burnwick.Burnwick.StatusTitle1")
    Q_PROPERTY(QList<burnwick::TitlePart> Title READ title)
    Q_PROPERTY(QString Description READ description)
    Q_PROPERTY(QString Summary READ summary)
    Q_PROPERTY(QList<burnwick::TitleLimit> Limits READ limits)
    Q_PROPERTY(QStringList Remarks READ remarks)

public:
    StatusTitleObject(StatusItemContent content, StatusItem::ActivateHandler handler);

    /// Returns the properties that differ from those before.
    QVariantMap setContent(const StatusItemContent &content);

    [[nodiscard]] QList<TitlePart> title() const;
    /// Returns the title for screen readers, with the dot's colour named.
    [[nodiscard]] QString description() const;
    [[nodiscard]] QString summary() const { return QString::fromStdString(m_content.summary); }
    [[nodiscard]] QList<TitleLimit> limits() const;
    [[nodiscard]] QStringList remarks() const;

public Q_SLOTS:
    /// Opens the window. The token is the shell's permission to raise it, or empty.
    Q_SCRIPTABLE void Activate(const QString &token) { m_handler(token.toStdString()); }

private:
    [[nodiscard]] QVariantMap properties() const;

    StatusItemContent m_content;
    StatusItem::ActivateHandler m_handler;
};

} // namespace burnwick
