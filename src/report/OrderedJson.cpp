// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/OrderedJson.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

namespace burnwick {

namespace {

/// Escapes what JSON leaves as it is and a terminal would obey or hide: DEL, C1 and the format characters.
QByteArray withEscapedControls(const QByteArray &json) {
    QString escaped;
    for (const QChar c : QString::fromUtf8(json)) {
        if (c.category() == QChar::Other_Control || c.category() == QChar::Other_Format)
            escaped += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
        else
            escaped += c;
    }
    return escaped.toUtf8();
}

QByteArray scalarText(const QJsonValue &value) {
    const QByteArray inBrackets = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return withEscapedControls(inBrackets.mid(1, inBrackets.size() - 2));
}

} // namespace

OrderedJson &OrderedJson::add(const QString &key, const QJsonValue &value) {
    m_members.push_back(scalarText(key) + ": " + scalarText(value));
    return *this;
}

OrderedJson &OrderedJson::add(const QString &key, const OrderedJson &value) {
    m_members.push_back(scalarText(key) + ": " + value.toJson());
    return *this;
}

OrderedJson &OrderedJson::add(const OrderedJson &value) {
    m_members.push_back(value.toJson());
    return *this;
}

QByteArray OrderedJson::toJson() const {
    QByteArray json(1, m_open);
    for (const QByteArray &member : m_members) {
        QByteArray indented = member;
        indented.replace('\n', "\n  ");
        json += (&member == m_members.data() ? "\n  " : ",\n  ") + indented;
    }
    if (!m_members.empty())
        json += '\n';
    return json + m_close;
}

} // namespace burnwick
