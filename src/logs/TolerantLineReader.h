// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/LineFields.h"
#include "json/JsonScanner.h"

#include <deque>
#include <string>
#include <string_view>

namespace burnwick {

/// The second reading of a line that the fast parser refused. It holds to the grammar of JSON as strictly,
/// but takes whatever it ignores (see JsonScanner); Claude Code writes such lines. Needs no memory but for
/// the texts it returns.
class TolerantLineReader {
public:
    /// The line's fields; absent when the line is not an object in valid JSON, or one of the nine keys has a
    /// value of another type. `line` must be valid UTF-8.
    [[nodiscard]] std::optional<LineFields> read(std::string_view line);

private:
    enum class Found { value, null, failure };

    Found readText(std::optional<std::string_view> &text);
    Found readCount(std::optional<std::int64_t> &count);
    Found readMessage(std::optional<LineFields::Message> &message);
    Found readUsage(std::optional<JSONLEntry::UsageWrapper> &usage);
    bool readMember(std::string_view key, LineFields &fields);

    JsonScanner m_json;
    std::deque<std::string> m_texts; ///< what the returned views point into
};

} // namespace burnwick
