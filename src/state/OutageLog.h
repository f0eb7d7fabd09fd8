// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <exception>

namespace burnwick {

/// Says in the log when a service cannot be reached, once for each outage: whoever looks for the reason of a
/// missing figure finds it there. Main thread only.
class OutageLog {
public:
    /// `service` is what the log calls it; it must outlive the object.
    explicit OutageLog(const char *service)
        : m_service(service) {}

    void reached() { m_told = false; }
    /// Other failures than those of the network are no outages and are not told.
    void failed(const std::exception &failure);

private:
    const char *m_service;
    bool m_told = false;
};

} // namespace burnwick
