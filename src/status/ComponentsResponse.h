// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/ClaudeComponentStatus.h"

#include <QByteArray>

#include <string>
#include <vector>

namespace burnwick {

/// The status page's list of components.
struct ComponentsResponse {
    struct Component {
        std::string id;
        std::string name;
        std::string status;

        bool operator==(const Component &) const = default;
    };

    std::vector<Component> components;

    bool operator==(const ComponentsResponse &) const = default;
};

/// Throws DecodeError.
[[nodiscard]] ComponentsResponse decodeComponentsResponse(const QByteArray &body);

/// The components of Claude Code, then those of the Claude API; each in the document's order.
[[nodiscard]] std::vector<ClaudeComponentStatus> claudeStatusesIn(const ComponentsResponse &response);

} // namespace burnwick
