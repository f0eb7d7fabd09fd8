// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "e2e/ProgramFixture.h"
#include "support/ScriptedServer.h"

#include <QDateTime>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QTemporaryDir>

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

/// Returns the usage endpoint's answer with that fault of the connection.
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
    /// Writes the settings, with the vendor's services at that server.
    void writeSettings(const QUrl &server, QJsonObject settings = {}) const {
        for (const char *key : {"apiBaseURL", "statusBaseURL"})
            settings.insert(QLatin1String(key), server.toString());
        writeFile(m_settings, QJsonDocument(settings).toJson().toStdString());
    }
    /// Writes settings with all services at the scripted server, also that of the updates.
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

/// A fixture with a login, whose program has clocks that the test moves by libfaketime. A sleeping program
/// notices a new time when something wakes it, such as a call of its status item. Skips the tests of programs
/// with a sanitizer, which must be loaded before any other library.
class TimedFixture : public AccountFixture {
protected:
    using AccountFixture::AccountFixture;

    void SetUp() override {
        const QString library = QStringLiteral(BURNWICK_FAKETIME_LIBRARY);
        if (!QFile::exists(library))
            GTEST_SKIP() << "the library that shifts a program's clock is not installed";
        set({{"LD_PRELOAD", library},
             {"FAKETIME_TIMESTAMP_FILE", m_shift.fileName()},
             {"FAKETIME_NO_CACHE", QStringLiteral("1")},
             {"NO_FAKE_STAT", QStringLiteral("1")}}); // file times are those that the test sets
        pass(std::chrono::seconds(0));
        logIn();
    }
    void pass(std::chrono::seconds time) {
        m_now = m_now.addSecs(time.count());
        m_passed += time;
        m_shift.open(QIODevice::WriteOnly);
        m_shift.write('+' + QByteArray::number(static_cast<qlonglong>(m_passed.count())));
        m_shift.commit();
    }
    [[nodiscard]] QByteArray stamp(std::chrono::seconds from) const {
        return m_now.addSecs(from.count()).toString(u"yyyy-MM-ddTHH:mm:ss.zzzZ").toLatin1();
    }

    QDateTime m_now = QDateTime::currentDateTimeUtc();

private:
    QTemporaryDir m_directory;
    QSaveFile m_shift{m_directory.filePath(QStringLiteral("shift"))};
    std::chrono::seconds m_passed{0};
};

} // namespace burnwick::test
