// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "e2e/ProgramFixture.h"
#include "support/ScriptedServer.h"
#include "support/ShiftedTime.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>

#include <chrono>
#include <string>

namespace burnwick::test {

inline ScriptedAnswer usage(int pct, const QByteArray &resetsAt = "2026-01-01T00:00:00Z",
                            ScriptedAnswer::Ending ending = ScriptedAnswer::Ending::complete) {
    return {200,
            R"({"five_hour":{"utilization":)" + QByteArray::number(pct) + R"(,"resets_at":")" + resetsAt +
                R"("},"seven_day":{"utilization":1}})",
            {},
            ending};
}

/// The usage endpoint's answer with that fault of the connection.
inline ScriptedAnswer usageEnding(ScriptedAnswer::Ending ending) {
    return usage(50, {}, ending);
}

/// An appcast whose newest release is 999.0.
inline ScriptedAnswer newerRelease() {
    return {200, "<rss><channel><item><sparkle:shortVersionString>999.0</sparkle:shortVersionString></item>"
                 "</channel></rss>"};
}

/// The real program with a scripted service on loopback.
class AccountFixture : public ProgramFixture {
protected:
    explicit AccountFixture(const PrivateBus &bus = sessionBusOfTests())
        : ProgramFixture(bus) {
        writeSettings(m_server.url());
        m_server.script("/api/v2/components.json", {{200, R"({"components":[]})"}});
    }
    /// The given settings, with the vendor's addresses at that server.
    void writeSettings(const QUrl &server, QJsonObject settings = {}) const {
        for (const char *key : {"apiBaseURL", "statusBaseURL"})
            settings.insert(QLatin1String(key), server.toString());
        writeFile(m_settings, QJsonDocument(settings).toJson().toStdString());
    }
    /// The same, with the updates' address there too.
    void writeSettingsWithUpdates() const {
        writeSettings(m_server.url(), {{QStringLiteral("productBaseURL"), m_server.url().toString()}});
    }
    void logIn(Instant expiry = std::chrono::sys_days(std::chrono::January / 1 / 2100)) const {
        const auto milliseconds =
            std::chrono::duration_cast<std::chrono::milliseconds>(expiry.time_since_epoch()).count();
        writeFile(m_credentials,
                  R"({"mcpOAuth":{"n":9007199254740993},"claudeAiOauth":{"accessToken":"old-token",)"
                  R"("refreshToken":"refresh-token","scopes":["user:inference"],"expiresAt":)" +
                      std::to_string(milliseconds) + "}}");
    }
    [[nodiscard]] std::size_t usageRequests() const {
        return m_server.requestsFor("/api/oauth/usage").size();
    }

    const std::filesystem::path m_settings = m_home.path() / ".config/burnwick/burnwick.json";
    const std::filesystem::path m_credentials = m_home.path() / ".claude/.credentials.json";
    ScriptedServer m_server;
};

/// With a login and a clock that the test moves.
class TimedFixture : public AccountFixture {
protected:
    using AccountFixture::AccountFixture;

    void SetUp() override {
        if (!m_time.available())
            GTEST_SKIP() << "the library that shifts a program's clock is not installed";
        QProcessEnvironment environment = m_program.processEnvironment();
        m_time.applyTo(environment);
        m_program.setProcessEnvironment(environment);
        logIn();
    }
    void pass(std::chrono::seconds time) {
        m_now = m_now.addSecs(time.count());
        m_time.advance(time);
    }
    [[nodiscard]] QByteArray stamp(std::chrono::seconds from) const {
        return m_now.addSecs(from.count()).toString(u"yyyy-MM-ddTHH:mm:ss.zzzZ").toLatin1();
    }

    ShiftedTime m_time;
    QDateTime m_now = QDateTime::currentDateTimeUtc();
};

} // namespace burnwick::test
