// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/WaitFor.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QEvent>

#include <exception>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

namespace burnwick::test {

/// The value or the error of a task; neither while it runs.
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

/// Returns at once; the task continues in the event loop.
template <typename T>
[[nodiscard]] std::shared_ptr<Outcome<T>> outcomeOf(QCoro::Task<T> task) {
    auto outcome = std::make_shared<Outcome<T>>();
    follow(std::move(task), outcome);
    return outcome;
}

/// Runs the event loop until the task ends. Returns its value or throws its error.
template <typename T>
T resultOf(QCoro::Task<T> task) {
    const auto outcome = outcomeOf(std::move(task));
    if (!waitFor([&] { return outcome->done(); }))
        throw std::logic_error("the task does not end");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    if (outcome->error)
        std::rethrow_exception(outcome->error);
    return *std::move(outcome->value);
}

/// Returns the error; throws another one.
template <typename Error>
Error caught(const std::exception_ptr &thrown) {
    try {
        std::rethrow_exception(thrown);
    } catch (const Error &error) {
        return error;
    }
}

/// Returns the error of the task; throws if the task succeeds or fails with another one.
template <typename Error, typename T>
Error errorOf(QCoro::Task<T> task) {
    try {
        resultOf(std::move(task));
    } catch (...) {
        return caught<Error>(std::current_exception());
    }
    throw std::logic_error("the task succeeds");
}

} // namespace burnwick::test
