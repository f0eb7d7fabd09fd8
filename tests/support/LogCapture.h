// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QMutex>
#include <QString>
#include <QStringList>

namespace burnwick::test {

/// Captures the lines of Qt's log instead of printing them. One object at a time.
class LogCapture {
public:
    LogCapture() {
        s_lines.clear();
        m_before = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &line) {
            const QMutexLocker locker(&s_mutex);
            s_lines.append(line);
        });
    }
    ~LogCapture() { qInstallMessageHandler(m_before); }
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    [[nodiscard]] QStringList lines() const {
        const QMutexLocker locker(&s_mutex);
        return s_lines;
    }

private:
    static inline QMutex s_mutex;
    static inline QStringList s_lines;
    QtMessageHandler m_before = nullptr;
};

} // namespace burnwick::test
