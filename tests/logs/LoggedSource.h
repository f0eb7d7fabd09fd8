// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DirectoryEventSource.h"

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>

namespace burnwick::test {

/// A number that other threads can wait for.
class Counter {
public:
    void increment() {
        const std::lock_guard lock(m_mutex);
        ++m_value;
        m_changed.notify_all();
    }
    [[nodiscard]] int value() const {
        const std::lock_guard lock(m_mutex);
        return m_value;
    }
    /// Returns false when it is still smaller at the deadline.
    [[nodiscard]] bool reaches(int value) const {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::seconds(20), [&] { return m_value >= value; });
    }

private:
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;
    int m_value = 0;
};

/// The calls of the sources that a monitor opened.
struct SourceLog {
    Counter opened, woken, closed;
    std::function<void()> beforeReturning; ///< called on the private thread before wait() returns a change
};

/// The system's source; counts its calls.
class LoggedSource final : public DirectoryEventSource {
public:
    LoggedSource(std::unique_ptr<DirectoryEventSource> source, SourceLog &log)
        : m_source(std::move(source))
        , m_log(log) {
        m_log.opened.increment();
    }
    ~LoggedSource() override {
        m_source.reset();
        m_log.closed.increment();
    }
    LoggedSource(const LoggedSource &) = delete;
    LoggedSource &operator=(const LoggedSource &) = delete;

    bool wait() override {
        const bool changed = m_source->wait();
        if (changed && m_log.beforeReturning)
            m_log.beforeReturning();
        return changed;
    }
    void wake() noexcept override {
        m_source->wake();
        m_log.woken.increment();
    }
    bool isAt(const std::filesystem::path &path) const override { return m_source->isAt(path); }
    int descriptor() const noexcept override { return m_source->descriptor(); }

private:
    std::unique_ptr<DirectoryEventSource> m_source;
    SourceLog &m_log;
};

} // namespace burnwick::test
