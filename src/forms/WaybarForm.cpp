// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/WaybarForm.h"

#include "forms/PangoMarkup.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <cmath>

namespace burnwick {

std::string waybarForm(const SessionFigures &session) {
    const std::string_view indicator = nameOf(session.indicator());
    QJsonObject module{
        {QStringLiteral("text"), QString::fromStdString(pangoTitle(session.title()))},
        {QStringLiteral("tooltip"), QString::fromStdString(pangoToolTip(session))},
        {QStringLiteral("class"),
         QString::fromUtf8(indicator.data(), static_cast<qsizetype>(indicator.size()))},
    };
    if (session.quota)
        module.insert(QStringLiteral("percentage"),
                      static_cast<qint64>(std::lround(session.quota->fiveHourUsagePct)));
    return QJsonDocument(module).toJson(QJsonDocument::Compact).toStdString() + '\n';
}

} // namespace burnwick
