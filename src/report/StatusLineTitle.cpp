// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/StatusLineTitle.h"

#include "ledger/Ledger.h"
#include "model/Cost.h"
#include "report/BackgroundProcess.h"
#include "report/TimedInput.h"
#include "state/LogFigures.h"
#include "json/JsonFile.h"
#include "json/JsonReading.h"

#include <QtCore/QSaveFile>

#include <array>
#include <cstring>
#include <type_traits>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace burnwick {

namespace {

using std::chrono::steady_clock;

/// A reading that takes longer stores what it reads.
constexpr std::chrono::milliseconds quickReading{100};
constexpr std::chrono::minutes longestReading{2};
constexpr std::chrono::hours oldestCache{1};

constexpr QLatin1String countKeys[] = {QLatin1String("input"), QLatin1String("output"),
                                       QLatin1String("cacheCreation"), QLatin1String("cacheRead")};
constexpr QLatin1String readAtKey("readAt");

static_assert(std::is_trivially_copyable_v<TitleFigures>, "it is sent through a pipe");

/// Waits until no other process reads the logs for a title; until its end, others wait for this one.
void becomeOnlyReader(const std::filesystem::path &logs) {
    if (const int folder = ::open(logs.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); folder >= 0)
        static_cast<void>(::flock(folder, LOCK_EX));
}

void store(const std::filesystem::path &file, const TitleFigures &figures, Instant readAt) {
    const auto &[input, output, cacheCreation, cacheRead] = figures.tokens;
    const qint64 counts[] = {input, output, cacheCreation, cacheRead};
    QJsonObject object{{readAtKey, static_cast<qint64>(readAt.time_since_epoch().count())}};
    for (std::size_t i = 0; i < std::size(counts); ++i)
        object.insert(countKeys[i], counts[i]);
    std::error_code ignored; // opening the file fails then
    std::filesystem::create_directories(file.parent_path(), ignored);
    QSaveFile device(QString::fromStdString(file));
    const QByteArray bytes = QJsonDocument(object).toJson();
    if (device.open(QIODevice::WriteOnly) && device.write(bytes) == bytes.size())
        device.commit();
}

std::optional<TitleFigures> load(const std::filesystem::path &file, Instant now) {
    try {
        const QJsonObject object = parseJsonObject(jsonFileBytes(file));
        const auto count = [&object](std::size_t i) { return object.value(countKeys[i]).toInteger(-1); };
        const SessionTokens tokens{count(0), count(1), count(2), count(3)};
        const Instant readAt{std::chrono::nanoseconds(object.value(readAtKey).toInteger())};
        // A sum of larger counts might overflow, which ends the program.
        constexpr qint64 most = qint64{1} << 60U;
        for (std::size_t i = 0; i < std::size(countKeys); ++i) {
            if (count(i) < 0 || count(i) > most)
                return std::nullopt;
        }
        const bool isFresh = readAt <= now && readAt > now - oldestCache;
        return isFresh ? std::optional(TitleFigures{tokens, sessionCost(tokens)}) : std::nullopt;
    } catch (const DecodeError &) {
        return std::nullopt;
    }
}

/// Writes the figures to the pipe, then stores them if that was late.
void readFigures(const TitleSources &sources, Instant now, steady_clock::time_point deadline, int pipe) {
    const JSONLParser parser(sources.home);
    becomeOnlyReader(parser.projectsURL());
    const auto began = steady_clock::now();
    Ledger ledger(sources.ledgerFolder);
    ledger.setKeepsHistory(sources.keepsHistory);
    const auto since = recentSince(Calendar::current(), now);
    const auto history = parser.parseRecentEntries(since, &ledger);
    const SessionTokens tokens = JSONLParser::calculateSessionTokens(history->entries);
    static_cast<void>(tokens.total()); // an overflow ends this process
    const TitleFigures figures{tokens, sessionCost(tokens)};
    // Fails if the reader does not wait any more.
    static_cast<void>(::write(pipe, &figures, sizeof figures) == sizeof figures);
    ::close(pipe);
    if (steady_clock::now() > deadline)
        store(sources.cacheFile, figures, now);
    if (steady_clock::now() - began > quickReading)
        static_cast<void>(parser.parseAllEntries(nullptr, &ledger));
}

} // namespace

std::optional<TitleFigures> titleFigures(const TitleSources &sources, const Clock &clock,
                                         const TitleDeadlines &deadlines) {
    const Instant now = clock.now();
    std::array<int, 2> pipe{-1, -1};
    if (::pipe(pipe.data()) != 0)
        return load(sources.cacheFile, now);
    runInBackground(longestReading, [&] {
        ::close(pipe[0]);
        readFigures(sources, now, deadlines.usual, pipe[1]);
    });
    ::close(pipe[1]);
    std::optional<TitleFigures> figures;
    std::string bytes = readUntil(deadlines.usual, pipe[0], sizeof *figures).bytes;
    if (bytes.empty())
        figures = load(sources.cacheFile, now);
    if (bytes.empty() && !figures)
        bytes = readUntil(deadlines.last, pipe[0], sizeof *figures).bytes;
    ::close(pipe[0]);
    if (bytes.size() == sizeof *figures)
        std::memcpy(&figures.emplace(), bytes.data(), sizeof *figures);
    return figures;
}

} // namespace burnwick
