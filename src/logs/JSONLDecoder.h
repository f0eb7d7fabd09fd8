// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/JSONLEntry.h"
#include "logs/LineFields.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

namespace burnwick {

/// Decodes log lines one after the other, keeping its buffers. For one thread.
class JSONLDecoder {
public:
    /// How many readable bytes, of any value, the fast reading needs behind a line.
    static const std::size_t padding;

    JSONLDecoder();
    ~JSONLDecoder();
    JSONLDecoder(const JSONLDecoder &) = delete;
    JSONLDecoder &operator=(const JSONLDecoder &) = delete;

    /// The line's entry; absent when the line is not valid UTF-8, not a JSON object, or has a value of
    /// another type than expected under one of the keys it reads. Whether the line counts is not looked at.
    [[nodiscard]] std::optional<JSONLEntry> decode(std::string_view line);
    /// The same without a copy, for a line that is followed by `padding` readable bytes.
    [[nodiscard]] std::optional<JSONLEntry> decodePadded(std::string_view line);

    /// The two readings on their own. decode() asks the second only where the first refuses the line.
    [[nodiscard]] std::optional<JSONLEntry> decodeFast(std::string_view line);
    [[nodiscard]] std::optional<JSONLEntry> decodeTolerant(std::string_view line);

private:
    struct Readers;

    enum class Padding { present, absent };
    [[nodiscard]] std::optional<JSONLEntry> decodeTwice(std::string_view line, Padding padding);
    [[nodiscard]] JSONLEntry makeEntry(const LineFields &fields);

    std::unique_ptr<Readers> m_readers;
    InternedString m_lastType;
    InternedString m_lastModel;
};

} // namespace burnwick
