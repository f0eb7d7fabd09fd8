// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace burnwick::test {

/// A line of a log as Claude Code writes it. Empty texts are left out.
struct UsageLine {
    std::string message = "m1";
    int output = 1;
    std::string request = "r1";
    std::string session = "s1";
    bool isSidechain = false;
    std::string model = "claude-opus-5";
    std::string time = "2026-08-01T10:00:00.000Z";
    std::string folder = "/work/atlas";
    std::string moreUsage = "";   ///< members of `usage`, with a comma before each
    std::string moreMembers = ""; ///< of the line, likewise

    /// Returns the line's JSON with its line feed. It has ten times as many input as output tokens.
    [[nodiscard]] std::string json() const {
        const auto member = [](const char *name, const std::string &value) {
            return value.empty() ? std::string() : ",\"" + std::string(name) + "\":\"" + value + '"';
        };
        return R"({"type":"assistant")" + member("timestamp", time) + member("requestId", request) +
               member("sessionId", session) + member("cwd", folder) +
               (isSidechain ? R"(,"isSidechain":true)" : R"(,"isSidechain":false)") + moreMembers +
               R"(,"message":{"role":"assistant")" + member("id", message) + member("model", model) +
               R"(,"usage":{"input_tokens":)" + std::to_string(10 * output) + R"(,"output_tokens":)" +
               std::to_string(output) + moreUsage + "}}}\n";
    }
};

} // namespace burnwick::test
