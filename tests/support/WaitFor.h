// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtTest/QTest>

#include <chrono>
#include <functional>

namespace burnwick {

/// Runs the event loop until the condition holds; false when it still does not at the deadline.
[[nodiscard]] inline bool waitFor(const std::function<bool()> &condition,
                                  std::chrono::milliseconds deadline = std::chrono::seconds(10)) {
    return QTest::qWaitFor(condition, static_cast<int>(deadline.count()));
}

} // namespace burnwick
