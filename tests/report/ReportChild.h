// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/WaitFor.h"

#include <QtCore/QProcess>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <unistd.h>

namespace burnwick::test {

struct Outcome {
    int exitCode = -1; ///< -1 after a signal
    int signal = 0;
    std::string output;
    std::string errors;
};

/// The report as a child process with few environment variables.
class Program {
public:
    explicit Program(const std::filesystem::path &home) {
        m_process.setProgram(QStringLiteral(BURNWICK_REPORT_PROGRAM));
        set("HOME", home.c_str());
        set("TZ", "UTC");
        set("PATH", qgetenv("PATH").constData());
        set("TSAN_OPTIONS", qgetenv("TSAN_OPTIONS").constData());
    }
    Program &set(const char *variable, const char *value) {
        m_environment.insert(QString::fromUtf8(variable), QString::fromUtf8(value));
        return *this;
    }
    Program &withStandardOutput(int (*open)()) {
        m_process.setChildProcessModifier([open] { ::dup2(open(), STDOUT_FILENO); });
        return *this;
    }
    Program &withStandardInput(const std::filesystem::path &file) {
        m_process.setStandardInputFile(QString::fromStdString(file));
        return *this;
    }
    /// Runs it with a pseudo terminal as its standard streams. The arguments are words of a shell, which may
    /// redirect.
    Outcome runInTerminal(const char *arguments = "") {
        m_process.setProgram(QStringLiteral("script"));
        return run({QStringLiteral("-qec"),
                    QStringLiteral(BURNWICK_REPORT_PROGRAM " ") + QString::fromUtf8(arguments),
                    QStringLiteral("/dev/null")});
    }
    /// Runs it with the bytes in a pipe as its standard input.
    Outcome runWithInput(const QStringList &arguments, const std::string &input) {
        start(arguments);
        m_process.write(QByteArray::fromStdString(input));
        m_process.closeWriteChannel();
        EXPECT_TRUE(m_process.waitForFinished()) << m_process.errorString().toStdString();
        return outcome();
    }
    Outcome run(const QStringList &arguments = {}) {
        start(arguments);
        EXPECT_TRUE(m_process.waitForFinished()) << m_process.errorString().toStdString();
        return outcome();
    }
    /// Runs the event loop meanwhile, for the servers in this process; needs an application object.
    Outcome runWhileServing(const QStringList &arguments) {
        start(arguments);
        EXPECT_TRUE(waitFor([this] { return m_process.state() == QProcess::NotRunning; }));
        return outcome();
    }
    /// Returns its id while it runs.
    [[nodiscard]] pid_t processId() const { return static_cast<pid_t>(m_process.processId()); }

private:
    void start(const QStringList &arguments) {
        m_process.setArguments(arguments);
        m_process.setProcessEnvironment(m_environment);
        m_process.start();
    }
    Outcome outcome() {
        const bool ended = m_process.exitStatus() == QProcess::NormalExit;
        return {ended ? m_process.exitCode() : -1, ended ? 0 : m_process.exitCode(),
                m_process.readAllStandardOutput().toStdString(),
                m_process.readAllStandardError().toStdString()};
    }

    QProcess m_process;
    QProcessEnvironment m_environment;
};

} // namespace burnwick::test
