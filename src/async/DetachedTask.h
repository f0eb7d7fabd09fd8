// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QCoroTask>
#include <QDebug>

#include <exception>

namespace burnwick {

/// Lets a task run to its end on its own. What it throws, which it should not, is logged instead of lost.
inline void runDetached(QCoro::Task<void> task) {
    task.then([] {}, [](const std::exception &error) { qWarning("A task failed: %s", error.what()); });
}

} // namespace burnwick
