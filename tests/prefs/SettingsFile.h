// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/LogTreeFixture.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>

namespace burnwick::test {

/// A temporary path for the settings file, removed with the object. The file and its folder are missing at
/// first.
struct SettingsFile {
    TemporaryDirectory directory;
    std::filesystem::path folder = directory.path() / "burnwick";
    QString path = QString::fromStdString(folder / "burnwick.json");

    /// Returns the names of the folder's entries, sorted.
    [[nodiscard]] QStringList names() const {
        return QDir(QString::fromStdString(folder))
            .entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    [[nodiscard]] QByteArray bytes() const { return QByteArray::fromStdString(bytesOf(path.toStdString())); }
    [[nodiscard]] QJsonObject values() const { return QJsonDocument::fromJson(bytes()).object(); }
    void write(const QByteArray &text) const { writeFile(path.toStdString(), text.toStdString()); }
};

} // namespace burnwick::test
