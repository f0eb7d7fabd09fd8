// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <exception>

namespace burnwick {

/// Logs failures of the network, one for each outage of a service: the log has the reason of a missing
/// figure.
class OutageLog final {
public:
    /// `service` is a literal.
    explicit OutageLog(const char *service)
        : m_service(service) {}

    /// Ignores other failures, cancelled requests and further failures of the same outage.
    void note(const std::exception &failure);
    void end() { m_isLogged = false; }

private:
    const char *m_service;
    bool m_isLogged = false;
};

} // namespace burnwick
