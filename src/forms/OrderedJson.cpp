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
    for (const char32_t character : QString::fromUtf8(json).toStdU32String()) {
        for (const char16_t unit : QChar::fromUcs4(character)) {
            if (isUnseen(character))
                escaped += QStringLiteral("\\u%1").arg(unit, 4, 16, QLatin1Char('0'));
            else
                escaped += QChar(unit);
        }
    }
    return escaped.toUtf8();
}

} // namespace

QByteArray OrderedJson::textOf(const QJsonValue &scalar) {
    const QByteArray inBrackets = QJsonDocument(QJsonArray{scalar}).toJson(QJsonDocument::Compact);
    return withEscapedControls(inBrackets.mid(1, inBrackets.size() - 2));
}

QByteArray OrderedJson::textOf(std::string_view utf8) {
    return textOf(QJsonValue(QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()))));
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
