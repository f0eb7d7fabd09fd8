// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QCoroTask>
#include <QDebug>

#include <exception>

namespace burnwick {

/// Runs a task without awaiting it. Logs its exception: such a task should not throw.
inline void runDetached(QCoro::Task<void> task) {
    task.then([] {}, [](const std::exception &error) { qWarning("A task failed: %s", error.what()); });
}

} // namespace burnwick
