// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QCoroTask>
#include <QEvent>
#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <exception>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

namespace burnwick::test {

/// What a task came to; neither while it runs.
template <typename T>
struct Outcome {
    std::optional<T> value;
    std::exception_ptr error;

    [[nodiscard]] bool done() const { return value || error; }
};

template <typename T>
QCoro::Task<> follow(QCoro::Task<T> task, std::shared_ptr<Outcome<T>> outcome) {
    try {
        outcome->value = co_await task;
    } catch (...) {
        outcome->error = std::current_exception();
    }
}

/// Lets the task run on by itself.
template <typename T>
[[nodiscard]] std::shared_ptr<Outcome<T>> outcomeOf(QCoro::Task<T> task) {
    auto outcome = std::make_shared<Outcome<T>>();
    follow(std::move(task), outcome);
    return outcome;
}

/// Runs the event loop until the task ends, and gives what it gives or throws what it throws.
template <typename T>
T resultOf(QCoro::Task<T> task) {
    const auto outcome = outcomeOf(std::move(task));
    QTimer deadline;
    deadline.setSingleShot(true);
    deadline.start(std::chrono::seconds(10));
    while (!outcome->done() && deadline.isActive())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    if (!outcome->done())
        throw std::logic_error("the task does not end");
    if (outcome->error)
        std::rethrow_exception(outcome->error);
    return *std::move(outcome->value);
}

/// The error of that type with which the task ends; throws when it ends otherwise.
template <typename Error, typename T>
Error errorOf(QCoro::Task<T> task) {
    try {
        resultOf(std::move(task));
    } catch (const Error &error) {
        return error;
    }
    throw std::logic_error("the task succeeds");
}

} // namespace burnwick::test
