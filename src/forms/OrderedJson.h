// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QJsonValue>
#include <QtCore/QString>

#include <vector>

namespace burnwick {

/// An indented JSON object or array that keeps the order of its members; QJsonObject sorts them.
class OrderedJson {
public:
    [[nodiscard]] static OrderedJson object() { return OrderedJson('{', '}'); }
    [[nodiscard]] static OrderedJson array() { return OrderedJson('[', ']'); }

    /// Members of an object.
    OrderedJson &add(const QString &key, const QJsonValue &value);
    OrderedJson &add(const QString &key, const OrderedJson &value);
    /// An element of an array.
    OrderedJson &add(const OrderedJson &value);

    /// Escapes unseen characters in texts; see isUnseen().
    [[nodiscard]] QByteArray toJson() const;

private:
    OrderedJson(char open, char close)
        : m_open(open)
        , m_close(close) {}

    char m_open;
    char m_close;
    std::vector<QByteArray> m_members;
};

} // namespace burnwick
