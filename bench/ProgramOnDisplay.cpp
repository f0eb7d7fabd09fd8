// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ProgramOnDisplay.h"

#include "ChildProcess.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTimer>

#include <csignal>
#include <stdexcept>

#include <sys/prctl.h>
#include <unistd.h>

namespace burnwick::bench {

ProgramOnDisplay::ProgramOnDisplay(const QString &program, const QProcessEnvironment &environment) {
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_process.setProcessEnvironment(environment);
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.setProgram(program);
}

ProgramOnDisplay::~ProgramOnDisplay() {
    m_process.kill();
    m_process.waitForFinished();
}

void ProgramOnDisplay::start() {
    m_started = std::chrono::steady_clock::now();
    m_process.start();
    if (!m_process.waitForStarted())
        throw std::runtime_error("cannot run " + m_process.program().toStdString());
}

double ProgramOnDisplay::secondsSinceStart() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - m_started).count();
}

std::string ProgramOnDisplay::fileOf(const std::string &name) const {
    return "/proc/" + std::to_string(m_process.processId()) + '/' + name;
}

double ProgramOnDisplay::processorSeconds() const {
    QFile file(QString::fromStdString(fileOf("stat")));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("the program ended");
    const QByteArray line = file.readAll();
    const auto fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
    return static_cast<double>(fields.at(11).toULongLong() + fields.at(12).toULongLong()) /
           static_cast<double>(::sysconf(_SC_CLK_TCK));
}

std::uint64_t ProgramOnDisplay::readBytes() const {
    return numberIn(fileOf("io"), "rchar");
}

void ProgramOnDisplay::waitUntilIdle() const {
    double before = -1;
    for (double now = processorSeconds(); now > before; now = processorSeconds()) {
        before = now;
        runFor(std::chrono::seconds(1));
    }
}

std::uint64_t ProgramOnDisplay::residentBytes() const {
    return numberIn(fileOf("smaps_rollup"), "Rss") * 1024;
}

std::uint64_t ProgramOnDisplay::privateBytes() const {
    const std::string file = fileOf("smaps_rollup");
    return (numberIn(file, "Private_Clean") + numberIn(file, "Private_Dirty")) * 1024;
}

/// A thread that waits once more has been woken in between.
std::map<QString, std::uint64_t> ProgramOnDisplay::waitsOfThreads() const {
    std::map<QString, std::uint64_t> waits;
    const QDir threads(QString::fromStdString(fileOf("task")));
    for (const QString &thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        waits[thread] =
            numberIn(fileOf("task/" + thread.toStdString() + "/status"), "voluntary_ctxt_switches");
    return waits;
}

std::uint64_t ProgramOnDisplay::wakeUpsWithin(std::chrono::milliseconds time) const {
    auto before = waitsOfThreads();
    runFor(time);
    std::uint64_t sum = 0;
    for (const auto &[thread, waits] : waitsOfThreads())
        sum += waits - before[thread];
    return sum;
}

void runUntil(const std::function<bool()> &condition, const char *what) {
    QTimer deadline;
    deadline.setSingleShot(true);
    deadline.start(std::chrono::seconds(30));
    while (!condition()) {
        if (!deadline.isActive())
            throw std::runtime_error(std::string("in vain waited for ") + what);
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void runFor(std::chrono::milliseconds time) {
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace burnwick::bench
