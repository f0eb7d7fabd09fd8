// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Process.h"

#include <QtCore/QFuture>
#include <QtCore/QPromise>

#include <functional>
#include <memory>
#include <utility>

namespace burnwick {

/// Runs the work by platform::runDetachedThread(). The future never finishes when the work does not.
template <typename T>
[[nodiscard]] QFuture<T> detachedThreadResult(std::function<T()> work) {
    // Shared only because a std::function must be copyable.
    const auto promise = std::make_shared<QPromise<T>>();
    promise->start();
    platform::runDetachedThread([promise, work = std::move(work)] {
        promise->addResult(work());
        promise->finish();
    });
    return promise->future();
}

} // namespace burnwick
