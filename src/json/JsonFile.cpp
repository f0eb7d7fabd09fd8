// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "json/JsonFile.h"

#include <QFile>
#include <QJsonDocument>
#include <QSaveFile>

#include <fstream>
#include <system_error>

#include <sys/stat.h>

namespace burnwick {

QByteArray jsonFileBytes(const std::filesystem::path &file) {
    constexpr qsizetype largestFile = qsizetype{1} << 20U;
    std::error_code error;
    // Opening a pipe would block until it has a writer.
    if (!std::filesystem::is_regular_file(file, error))
        return {};
    std::ifstream input(file, std::ios::binary);
    // One byte more shows that the limit is exceeded. Not the size: the file may be growing.
    QByteArray bytes(largestFile + 1, Qt::Uninitialized);
    input.read(bytes.data(), bytes.size());
    bytes.truncate(input.gcount());
    return bytes.size() <= largestFile ? bytes : QByteArray();
}

bool replaceJsonFile(const std::filesystem::path &file, const QJsonObject &object) {
    std::error_code ignored; // opening the file fails then
    std::filesystem::create_directories(file.parent_path().parent_path(), ignored);
    ::mkdir(file.parent_path().c_str(), S_IRWXU);
    const QByteArray bytes = QJsonDocument(object).toJson();
    QSaveFile device(QString::fromStdString(file));
    return device.open(QIODevice::WriteOnly) && device.setPermissions(QFile::ReadOwner | QFile::WriteOwner) &&
           device.write(bytes) == bytes.size() && device.commit();
}

} // namespace burnwick
