// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Process.h"

#include <QtCore/QFuture>
#include <QtCore/QPromise>

#include <functional>
#include <memory>
#include <utility>

namespace burnwick::platform {

/// The result of work that may never end; see runUnawaited(). Nobody has to wait for it.
template <typename T>
[[nodiscard]] QFuture<T> unawaitedResult(std::function<T()> work) {
    // Shared only because a std::function must be copyable.
    const auto promise = std::make_shared<QPromise<T>>();
    promise->start();
    runUnawaited([promise, work = std::move(work)] {
        promise->addResult(work());
        promise->finish();
    });
    return promise->future();
}

} // namespace burnwick::platform
