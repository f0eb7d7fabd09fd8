// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "e2e/ProgramFixture.h"
#include "support/ScriptedServer.h"

#include <chrono>
#include <fstream>
#include <sstream>
#include <string>

namespace burnwick::test {

inline ScriptedAnswer answerOf(int status, const QByteArray &body) {
    ScriptedAnswer answer;
    answer.status = status;
    answer.body = body;
    return answer;
}

inline ScriptedAnswer usage(int pct, const QByteArray &resetsAt = "2026-01-01T00:00:00Z") {
    return answerOf(200, R"({"five_hour":{"utilization":)" + QByteArray::number(pct) + R"(,"resets_at":")" +
                             resetsAt + R"("},"seven_day":{"utilization":1}})");
}

/// The real program with the vendor's services played on loopback.
class AccountFixture : public ProgramFixture {
protected:
    explicit AccountFixture(const PrivateBus &bus = sessionBusOfTests())
        : ProgramFixture(bus) {
        writeFile(m_settings, R"({"apiBaseURL":")" + m_server.url().toString().toStdString() +
                                  R"(","statusBaseURL":")" + m_server.url().toString().toStdString() +
                                  R"("})");
        m_server.script("/api/v2/components.json", {answerOf(200, R"({"components":[]})")});
    }
    void logIn(Instant expiry = std::chrono::sys_days(std::chrono::January / 1 / 2100)) const {
        const auto milliseconds =
            std::chrono::duration_cast<std::chrono::milliseconds>(expiry.time_since_epoch()).count();
        writeFile(m_credentials,
                  R"({"mcpOAuth":{"n":9007199254740993},"claudeAiOauth":{"accessToken":"old-token",)"
                  R"("refreshToken":"refresh-token","scopes":["user:inference"],"expiresAt":)" +
                      std::to_string(milliseconds) + "}}");
    }
    [[nodiscard]] static std::string contentOf(const std::filesystem::path &file) {
        std::ostringstream text;
        text << std::ifstream(file).rdbuf();
        return text.str();
    }

    const std::filesystem::path m_settings = m_home.path() / ".config/burnwick/burnwick.json";
    const std::filesystem::path m_credentials = m_home.path() / ".claude/.credentials.json";
    ScriptedServer m_server;
};

} // namespace burnwick::test
