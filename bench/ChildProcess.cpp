// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ChildProcess.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <stdexcept>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace burnwick::bench {

namespace {

std::vector<char *> pointersTo(std::vector<std::string> &texts) {
    std::vector<char *> pointers(texts.size() + 1, nullptr);
    std::transform(texts.begin(), texts.end(), pointers.begin(),
                   [](std::string &text) { return text.data(); });
    return pointers;
}

} // namespace

ProcessCost runProcess(const std::vector<std::string> &command, const std::vector<std::string> &environment,
                       const std::string &output) {
    std::vector<std::string> arguments = command;
    std::vector<std::string> variables = environment;
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                       0644);

    // A process's figures include those of its ended children.
    const std::uint64_t readBefore = numberIn("/proc/self/io", "rchar");
    const auto begin = std::chrono::steady_clock::now();
    pid_t child = 0;
    const int error = ::posix_spawn(&child, arguments.front().c_str(), &actions, nullptr,
                                    pointersTo(arguments).data(), pointersTo(variables).data());
    ::posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage{};
    if (error != 0 || ::wait4(child, &status, 0, &usage) != child)
        throw std::runtime_error("cannot run " + command.front());
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error(command.front() + " failed");
    return {elapsed.count(), static_cast<std::uint64_t>(usage.ru_maxrss) * 1024,
            numberIn("/proc/self/io", "rchar") - readBefore};
}

std::uint64_t numberIn(const std::string &file, const std::string &key) {
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(key + ':'))
            return std::stoull(line.substr(key.size() + 1));
    }
    throw std::runtime_error("no " + key + " in " + file);
}

} // namespace burnwick::bench
