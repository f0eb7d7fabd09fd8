// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace burnwick::test {

/// Fails the test unless the JSON has all expected members; ignores others. Fractions may differ in their
/// last digits.
inline void expectMembers(const QJsonValue &json, const QJsonValue &expected, const std::string &path = {}) {
    if (expected.isObject()) {
        const QJsonObject members = expected.toObject();
        for (const QString &key : members.keys())
            expectMembers(json[key], members[key], path + '.' + key.toStdString());
    } else if (expected.isArray()) {
        ASSERT_EQ(json.toArray().size(), expected.toArray().size()) << path;
        for (qsizetype i = 0; i < expected.toArray().size(); ++i)
            expectMembers(json[i], expected[i], path + '.' + std::to_string(i));
    } else if (expected.isDouble() && expected.toDouble() != std::round(expected.toDouble())) {
        EXPECT_DOUBLE_EQ(json.toDouble(), expected.toDouble()) << path;
    } else {
        EXPECT_EQ(json, expected) << path;
    }
}

/// Returns the object in the text; fails the test for other text.
inline QJsonObject jsonObject(const std::string &text) {
    QJsonParseError error;
    const auto document = QJsonDocument::fromJson(QByteArray::fromStdString(text), &error);
    EXPECT_TRUE(document.isObject()) << error.errorString().toStdString() << " in " << text;
    return document.object();
}

/// The same with the expected members as text.
inline void expectMembers(const QJsonValue &json, const char *expected) {
    expectMembers(json, jsonObject(expected));
}

} // namespace burnwick::test
