// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/StatusLineTitle.h"

#include "display/PriceText.h"
#include "ledger/Ledger.h"
#include "model/Cost.h"
#include "report/BackgroundProcess.h"
#include "report/TimedInput.h"
#include "state/LogFigures.h"
#include "json/JsonFile.h"
#include "json/JsonReading.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <thread>
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
constexpr QLatin1String costKey("cost");
constexpr QLatin1String readAtKey("readAt");

static_assert(std::is_trivially_copyable_v<TitleFigures>, "it is sent through a pipe");

/// Waits until no other process reads the logs for a title; until its end, others wait for this one. Returns
/// false at the deadline: while the first reading of large logs lasts, no queue of processes may form.
bool becomeOnlyReader(const std::vector<std::filesystem::path> &logs, steady_clock::time_point deadline) {
    int folder = -1;
    for (auto first = logs.begin(); folder < 0 && first != logs.end(); ++first)
        folder = ::open(first->c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    while (folder >= 0 && ::flock(folder, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        if (steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

void store(const std::filesystem::path &file, const TitleFigures &figures, Instant readAt) {
    const auto &[input, output, cacheCreation, cacheRead] = figures.tokens;
    const qint64 counts[] = {input, output, cacheCreation, cacheRead};
    QJsonObject object{{readAtKey, static_cast<qint64>(readAt.time_since_epoch().count())},
                       {costKey, figures.cost ? QJsonValue(*figures.cost) : QJsonValue()}};
    for (std::size_t i = 0; i < std::size(counts); ++i)
        object.insert(countKeys[i], counts[i]);
    replaceJsonFile(file, object);
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
        const QJsonValue cost = object.value(costKey);
        TitleFigures figures{tokens, {}};
        if (!cost.isNull())
            figures.cost = cost.toDouble(-1);
        const bool isValid = readAt <= now && readAt > now - oldestCache && figures.cost.value_or(0) >= 0;
        return isValid ? std::optional(figures) : std::nullopt;
    } catch (const DecodeError &) {
        return std::nullopt;
    }
}

TitleFigures figuresOf(const LogHistory &history, FigureChoice choice) {
    if (choice == FigureChoice::exact) {
        const SessionFigures session = ExactCounting(PriceTable::ofUser()).session(history.entries);
        return {session.tokens, costOf(priceOf(session))};
    }
    const SessionTokens tokens = JSONLParser::calculateSessionTokens(history.entries);
    return {tokens, sessionCost(tokens)};
}

/// Writes the figures to the pipe, then stores them if that was late.
void readFigures(const TitleSources &sources, Instant now, const TitleDeadlines &deadlines, int pipe) {
    const JSONLParser parser(sources.logFolders);
    if (!becomeOnlyReader(parser.folders(), deadlines.last))
        return;
    const auto began = steady_clock::now();
    Ledger ledger(sources.ledgerFolder);
    ledger.setKeepsHistory(sources.keepsHistory);
    if (sources.figures == FigureChoice::asLogged)
        ledger.omitMessages();
    const auto since = recentSince(Calendar::current(), now);
    const auto history = parser.parseRecentEntries(since, &ledger);
    const TitleFigures figures = figuresOf(*history, sources.figures);
    static_cast<void>(figures.tokens.total()); // an overflow ends this process
    // Fails if the reader does not wait any more.
    static_cast<void>(::write(pipe, &figures, sizeof figures) == sizeof figures);
    ::close(pipe);
    if (steady_clock::now() > deadlines.usual)
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
        readFigures(sources, now, deadlines, pipe[1]);
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
