// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QJsonValue>

#include <concepts>
#include <optional>
#include <string_view>
#include <vector>

namespace burnwick {

/// An indented JSON object or array that keeps the order of its members; QJsonObject sorts them.
class OrderedJson {
public:
    [[nodiscard]] static OrderedJson object() { return OrderedJson('{', '}'); }
    [[nodiscard]] static OrderedJson array() { return OrderedJson('[', ']'); }

    /// Adds a member to an object. The value is a bool, a number, UTF-8 text, JSON, or optionally one of
    /// them; an absent one becomes null.
    template <typename Value>
    OrderedJson &add(std::string_view key, const Value &value) {
        m_members.push_back(textOf(key) + ": " + textOf(value));
        return *this;
    }
    /// Adds an element to an array.
    OrderedJson &add(const OrderedJson &value) {
        m_members.push_back(value.toJson());
        return *this;
    }

    /// Returns UTF-8 with unseen characters escaped; see isUnseen().
    [[nodiscard]] QByteArray toJson() const;

private:
    OrderedJson(char open, char close)
        : m_open(open)
        , m_close(close) {}

    static QByteArray textOf(const QJsonValue &scalar);
    static QByteArray textOf(std::string_view utf8);
    static QByteArray textOf(std::signed_integral auto count) {
        return textOf(QJsonValue(static_cast<qint64>(count)));
    }
    static QByteArray textOf(const OrderedJson &json) { return json.toJson(); }
    template <typename Value>
    static QByteArray textOf(const std::optional<Value> &value) {
        return value ? textOf(*value) : textOf(QJsonValue());
    }

    char m_open;
    char m_close;
    std::vector<QByteArray> m_members;
};

} // namespace burnwick
