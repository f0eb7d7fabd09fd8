// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "LogFacts.h"
#include "Random.h"
#include "SampleText.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace burnwick::bench {

/// The lines of one session, as Claude Code writes them.
class SessionLines {
public:
    SessionLines(std::string_view project, const SampleText &text, Random &random);

    [[nodiscard]] const std::string &id() const { return m_id; }

    // Each appends a line of about `size` bytes, with its feed. Times are milliseconds since 1970.
    void addPrompt(std::string &log, std::int64_t time, std::size_t size);
    /// What a tool gave back; a result of a subagent has usage of its own, which is not to be counted.
    void addToolResult(std::string &log, std::int64_t time, std::size_t size);
    void addAssistant(std::string &log, std::int64_t time, std::size_t size, LogFacts &facts);

private:
    void beginLine(std::string &log);
    void endLine(std::string &log, std::string_view type, std::int64_t time);
    void addContent(std::string &log, std::size_t size);
    void addUsage(std::string &log, const SessionTokens &counts) const;
    [[nodiscard]] std::string makeUuid();
    [[nodiscard]] std::string makeId(std::string_view prefix);

    const SampleText &m_text;
    Random &m_random;
    std::string m_id;
    std::string m_cwd;
    std::string m_version;
    std::string m_branch;
    std::string_view m_model;
    std::string m_lastUuid;
    std::string m_lastTool;
    bool m_hasEscapedLetters;
};

} // namespace burnwick::bench
