// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QString>

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

namespace burnwick::bench {

/// A program that runs beside the benchmark and is looked at from outside. Ends with this object.
class ProgramOnDisplay {
public:
    ProgramOnDisplay(const QString &program, const QProcessEnvironment &environment);
    ~ProgramOnDisplay();
    ProgramOnDisplay(const ProgramOnDisplay &) = delete;
    ProgramOnDisplay &operator=(const ProgramOnDisplay &) = delete;

    /// The time base of what happens to it from now on.
    void start();
    [[nodiscard]] double secondsSinceStart() const;

    /// Runs the event loop until the program has used no processor time for a second.
    void waitUntilIdle() const;
    /// Resident memory now, in bytes: all of it, and what no other process shares.
    [[nodiscard]] std::uint64_t residentBytes() const;
    [[nodiscard]] std::uint64_t privateBytes() const;
    /// Of all its threads, in steps of 10 ms.
    [[nodiscard]] double processorSeconds() const;
    /// What its read calls have returned.
    [[nodiscard]] std::uint64_t readBytes() const;
    /// How often a thread of its was woken within the time, for which the event loop runs.
    [[nodiscard]] std::uint64_t wakeUpsWithin(std::chrono::milliseconds time) const;

private:
    [[nodiscard]] std::map<QString, std::uint64_t> waitsOfThreads() const;
    [[nodiscard]] std::string fileOf(const std::string &name) const;

    QProcess m_process;
    std::chrono::steady_clock::time_point m_started;
};

/// Runs the event loop until the condition holds, looking at it after each event. Throws std::runtime_error
/// when it does not within half a minute; `what` names it then.
void runUntil(const std::function<bool()> &condition, const char *what);

/// Runs the event loop for that long.
void runFor(std::chrono::milliseconds time);

} // namespace burnwick::bench
