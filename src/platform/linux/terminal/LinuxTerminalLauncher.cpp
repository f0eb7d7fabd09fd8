// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/terminal/LinuxTerminalLauncher.h"

#include "platform/Platform.h"
#include "platform/linux/terminal/TerminalCommands.h"

#include <QtCore/QLoggingCategory>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QTimer>

#include <memory>
#include <utility>

#include <unistd.h>

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(terminalLog, "burnwick.terminal")

/// A child in a new session, which outlives this object and the program.
class IndependentProcess final : public QProcess {
public:
    IndependentProcess() {
        setChildProcessModifier([] { ::setsid(); });
        setStandardInputFile(nullDevice());
        setStandardOutputFile(nullDevice());
        // A terminal's errors appear in this program's log. A pipe would break when this program ends.
        setProcessChannelMode(ForwardedErrorChannel);
    }
    ~IndependentProcess() override {
        // The base class kills a running process.
        setProcessState(NotRunning);
    }
};

/// One request: tries the command lines in turn, answers, and exists until the window's process has ended.
class TerminalLaunch final : public QObject {
public:
    using Answer = std::function<void(bool launched)>;

    TerminalLaunch(std::vector<QStringList> commandLines, std::chrono::milliseconds settlingTime,
                   Answer answer, QObject *parent)
        : QObject(parent)
        , m_commandLines(std::move(commandLines))
        , m_answer(std::move(answer)) {
        m_settling.setSingleShot(true);
        m_settling.setInterval(settlingTime);
        connect(&m_settling, &QTimer::timeout, this, [this] { settle(true); });
        QMetaObject::invokeMethod(this, &TerminalLaunch::tryNext, Qt::QueuedConnection);
    }

private:
    void tryNext() {
        if (m_next == m_commandLines.size()) {
            qCWarning(terminalLog) << "no terminal could be started";
            deleteLater();
            settle(false);
            return;
        }
        QStringList arguments = m_commandLines[m_next++];
        const QString program = arguments.takeFirst();
        m_process = std::make_unique<IndependentProcess>();
        // Queued, because what follows destroys the sender.
        connect(
            m_process.get(), &QProcess::finished, this,
            [this](int exitCode, QProcess::ExitStatus exitStatus) {
                ended(exitStatus == QProcess::NormalExit && exitCode == 0);
            },
            Qt::QueuedConnection);
        connect(
            m_process.get(), &QProcess::errorOccurred, this,
            [this](QProcess::ProcessError error) {
                if (error == QProcess::FailedToStart)
                    ended(false);
            },
            Qt::QueuedConnection);
        m_settling.start();
        m_process->start(program, arguments);
    }

    void ended(bool succeeded) {
        m_settling.stop();
        if (m_answer && !succeeded) {
            qCInfo(terminalLog) << m_process->program() << "opened no window";
            tryNext();
            return;
        }
        deleteLater();
        if (m_answer)
            settle(true);
    }

    /// May destroy this object.
    void settle(bool launched) { std::exchange(m_answer, nullptr)(launched); }

    std::vector<QStringList> m_commandLines;
    std::size_t m_next = 0;
    Answer m_answer; ///< empty after the answer
    std::unique_ptr<IndependentProcess> m_process;
    QTimer m_settling;
};

} // namespace

LinuxTerminalLauncher::LinuxTerminalLauncher(std::chrono::milliseconds settlingTime)
    : m_settlingTime(settlingTime) {}

void LinuxTerminalLauncher::runInLoginShell(const std::string &command,
                                            std::function<void(bool launched)> answer) {
    const auto environment = QProcessEnvironment::systemEnvironment();
    const auto findExecutable = [](const QString &program) {
        return QStandardPaths::findExecutable(program);
    };
    const QStringList inWindow =
        loginShellCommand(environment, findExecutable, QString::fromStdString(command));
    std::vector<QStringList> commandLines = terminalCommands(environment, findExecutable);
    for (QStringList &commandLine : commandLines)
        commandLine += inWindow;
    new TerminalLaunch(std::move(commandLines), m_settlingTime, std::move(answer), &m_launches);
}

std::unique_ptr<TerminalLauncher> platform::makeTerminalLauncher() {
    return std::make_unique<LinuxTerminalLauncher>();
}

} // namespace burnwick
