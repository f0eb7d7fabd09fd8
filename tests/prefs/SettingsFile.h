// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace burnwick::test {

inline void writeBytes(const QString &path, const QByteArray &bytes) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qUtf8Printable(path));
}

inline QByteArray bytesOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A temporary path for the settings file, removed with the object. The file and its folder are missing at
/// first.
struct SettingsFile {
    QTemporaryDir directory;
    QString path = directory.filePath(QStringLiteral("burnwick/burnwick.json"));

    [[nodiscard]] QString folder() const { return QFileInfo(path).path(); }
    /// The names of the folder's entries, sorted.
    [[nodiscard]] QStringList names() const {
        return QDir(folder()).entryList(QDir::AllEntries | QDir::System | QDir::Hidden |
                                        QDir::NoDotAndDotDot);
    }
    [[nodiscard]] QByteArray bytes() const { return bytesOf(path); }
    [[nodiscard]] QJsonObject values() const { return QJsonDocument::fromJson(bytes()).object(); }
    void write(const QByteArray &text) const { writeBytes(path, text); }
};

} // namespace burnwick::test
