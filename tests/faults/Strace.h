// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/LogTreeFixture.h"

#include <QProcess>

#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace burnwick::test {

/// A call of the kernel, with its ordinal among the program's calls of that name.
struct Call {
    std::string name;
    int number;
    std::string text;
};

/// Runs programs under strace, which lists their calls of the kernel and makes one fail.
class Strace {
public:
    /// Runs the command. Returns its exit code; negative when a signal ended it.
    int run(const QStringList &command, const QStringList &options = {}) {
        const QStringList trace{QStringLiteral("-f"), QStringLiteral("-o"), QString::fromStdString(m_trace)};
        m_process.start(QStringLiteral("strace"), trace + options + command);
        m_process.waitForFinished();
        return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }
    /// The same with a fault at that call, such as "error=EIO"; with `when` "+" also at all later ones.
    int runWithFault(const QStringList &command, const Call &call, const std::string &fault,
                     const char *when = "") {
        const auto name = QString::fromStdString(call.name);
        return run(command, {QStringLiteral("-e"), QStringLiteral("trace=") + name, QStringLiteral("-e"),
                             QStringLiteral("inject=%1:%2:when=%3%4")
                                 .arg(name, QString::fromStdString(fault), QString::number(call.number),
                                      QString::fromUtf8(when))});
    }
    /// Returns whether strace is installed and permitted to trace.
    bool isAvailable() { return run({QStringLiteral("true")}) == 0; }

    QProcess &process() { return m_process; }
    [[nodiscard]] bool hasFailedACall() const {
        return bytesOf(m_trace).find("INJECTED") != std::string::npos;
    }
    /// Returns the calls of the last run.
    [[nodiscard]] std::vector<Call> calls() const {
        std::vector<Call> calls;
        std::map<std::string, int> counts;
        std::istringstream lines(bytesOf(m_trace));
        for (std::string line; std::getline(lines, line);) {
            const auto begin = line.find_first_not_of("0123456789 ");
            const auto end = line.find('(');
            if (begin == std::string::npos || end == std::string::npos || end < begin)
                continue;
            const std::string name = line.substr(begin, end - begin);
            calls.push_back({name, ++counts[name], line});
        }
        return calls;
    }

private:
    const TemporaryDirectory m_directory;
    const std::filesystem::path m_trace = m_directory.path() / "trace";
    QProcess m_process;
};

} // namespace burnwick::test
