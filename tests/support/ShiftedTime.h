// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QProcessEnvironment>
#include <QSaveFile>
#include <QTemporaryDir>

#include <chrono>

namespace burnwick::test {

/// Moves all the clocks of a program that the test starts, by libfaketime. A program that sleeps notices when
/// something wakes it. Not for programs built with a sanitizer, which must be loaded before any other
/// library.
class ShiftedTime {
public:
    ShiftedTime() { advance(std::chrono::seconds(0)); }

    [[nodiscard]] static bool available() { return QFile::exists(QStringLiteral(BURNWICK_FAKETIME_LIBRARY)); }

    void applyTo(QProcessEnvironment &environment) const {
        environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(BURNWICK_FAKETIME_LIBRARY));
        environment.insert(QStringLiteral("FAKETIME_TIMESTAMP_FILE"), path());
        environment.insert(QStringLiteral("FAKETIME_NO_CACHE"), QStringLiteral("1"));
        // Files keep the times that the test gave them.
        environment.insert(QStringLiteral("NO_FAKE_STAT"), QStringLiteral("1"));
    }

    void advance(std::chrono::seconds by) {
        m_shift += by;
        QSaveFile file(path());
        file.open(QIODevice::WriteOnly);
        file.write('+' + QByteArray::number(static_cast<qlonglong>(m_shift.count())));
        file.commit();
    }

private:
    [[nodiscard]] QString path() const { return m_directory.filePath(QStringLiteral("shift")); }

    QTemporaryDir m_directory;
    std::chrono::seconds m_shift{0};
};

} // namespace burnwick::test
