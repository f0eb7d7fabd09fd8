// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <memory>
#include <thread>
#include <type_traits>
#include <utility>

namespace burnwick {

/// A request to end work early. Copies share it. Safe from any thread.
class StopRequest {
public:
    void make() const noexcept { m_requested->store(true, std::memory_order_relaxed); }
    [[nodiscard]] bool isMade() const noexcept { return m_requested->load(std::memory_order_relaxed); }

private:
    std::shared_ptr<std::atomic<bool>> m_requested = std::make_shared<std::atomic<bool>>(false);
};

/// A thread whose destructor, like an assignment of another thread, requests its end and waits for it: like
/// std::jthread, which libc++ offers from version 20 on. Each object belongs to one thread.
class StoppableThread {
public:
    /// No thread.
    StoppableThread() = default;
    /// Calls `work(const StopRequest &)`, or `work()`, on a new thread. Throws std::system_error when the
    /// system cannot create one.
    template <typename Work>
    explicit StoppableThread(Work work) {
        m_thread = std::thread([stop = m_stop, run = std::move(work)] {
            if constexpr (std::is_invocable_v<const Work &, const StopRequest &>)
                run(stop);
            else
                run();
        });
    }
    StoppableThread(StoppableThread &&other) noexcept { *this = std::move(other); }
    StoppableThread &operator=(StoppableThread &&other) noexcept {
        end();
        m_stop = other.m_stop;
        m_thread = std::move(other.m_thread);
        return *this;
    }
    ~StoppableThread() { end(); }

    /// Requests the end of the work without waiting for it.
    void requestStop() const noexcept { m_stop.make(); }

private:
    void end() {
        if (!m_thread.joinable())
            return;
        m_stop.make();
        m_thread.join();
    }

    StopRequest m_stop;
    std::thread m_thread;
};

} // namespace burnwick
