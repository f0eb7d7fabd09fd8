// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace burnwick {

/// The health of one component of the service.
struct ClaudeComponentStatus {
    enum class Status { operational, degraded, outage, unknown };

    std::string name; ///< as the status page gives it
    Status status = Status::unknown;

    bool operator==(const ClaudeComponentStatus &) const = default;
};

/// The case's name: "operational" and so on.
[[nodiscard]] constexpr std::string_view nameOf(ClaudeComponentStatus::Status status) noexcept {
    using Status = ClaudeComponentStatus::Status;
    switch (status) {
    case Status::operational:
        return "operational";
    case Status::degraded:
        return "degraded";
    case Status::outage:
        return "outage";
    case Status::unknown:
        break;
    }
    return "unknown";
}

/// The word for the user: "Operational" and so on.
[[nodiscard]] constexpr std::string_view wordFor(ClaudeComponentStatus::Status status) noexcept {
    using Status = ClaudeComponentStatus::Status;
    switch (status) {
    case Status::operational:
        return "Operational";
    case Status::degraded:
        return "Degraded";
    case Status::outage:
        return "Outage";
    case Status::unknown:
        break;
    }
    return "Unknown";
}

} // namespace burnwick
