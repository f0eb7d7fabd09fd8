// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/OrderedJson.h"

#include "display/DisplayText.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

namespace burnwick {

namespace {

/// Escapes the characters that JSON allows in texts, but that a terminal would hide or interpret.
QByteArray withEscapedControls(const QByteArray &json) {
    QString escaped;
    const auto escape = [&escaped](char16_t unit) {
        escaped += QStringLiteral("\\u%1").arg(unit, 4, 16, QLatin1Char('0'));
    };
    for (const char32_t character : QString::fromUtf8(json).toStdU32String()) {
        if (!isUnseen(character)) {
            escaped += QChar::fromUcs4(character);
        } else if (QChar::requiresSurrogates(character)) {
            escape(QChar::highSurrogate(character));
            escape(QChar::lowSurrogate(character));
        } else {
            escape(static_cast<char16_t>(character));
        }
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
