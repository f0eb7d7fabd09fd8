// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace burnwick {

/// The health of one component of the service.
struct ClaudeComponentStatus {
    enum class Status { operational, degraded, outage, unknown };

    std::string name; ///< exactly as on the status page
    Status status = Status::unknown;

    bool operator==(const ClaudeComponentStatus &) const = default;
};

/// Returns the name of the case, such as "operational".
[[nodiscard]] constexpr std::string_view nameOf(ClaudeComponentStatus::Status status) noexcept {
    constexpr std::string_view names[] = {"operational", "degraded", "outage", "unknown"};
    return names[static_cast<std::size_t>(status)];
}

/// Returns the word for the user, such as "Operational".
[[nodiscard]] constexpr std::string_view wordFor(ClaudeComponentStatus::Status status) noexcept {
    constexpr std::string_view words[] = {"Operational", "Degraded", "Outage", "Unknown"};
    return words[static_cast<std::size_t>(status)];
}

} // namespace burnwick
