// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/JSONLEntry.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace burnwick {

/// The nine keys of a log line as a reader found them. The views live as long as the reader's last line.
/// A key that occurs twice counts with its last value.
struct LineFields {
    struct Message {
        std::optional<std::string_view> model;
        std::optional<JSONLEntry::UsageWrapper> usage;
    };

    std::optional<std::string_view> type;
    std::optional<std::string_view> timestamp;
    std::optional<Message> message;
};

/// The count that the key of a "usage" object stands for; null for any other key.
[[nodiscard]] inline std::optional<std::int64_t> *countNamed(std::string_view key,
                                                             JSONLEntry::UsageWrapper &usage) noexcept {
    if (key == "input_tokens")
        return &usage.inputTokens;
    if (key == "output_tokens")
        return &usage.outputTokens;
    if (key == "cache_creation_input_tokens")
        return &usage.cacheCreationInputTokens;
    if (key == "cache_read_input_tokens")
        return &usage.cacheReadInputTokens;
    return nullptr;
}

} // namespace burnwick
