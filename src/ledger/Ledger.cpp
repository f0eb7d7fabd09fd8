// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/Ledger.h"

#include "async/RunOnThreads.h"
#include "ledger/LedgerDatabase.h"

#include <QtCore/QLoggingCategory>
#include <QtCore/QStandardPaths>

#include <algorithm>
#include <atomic>
#include <thread>
#include <tuple>
#include <utility>

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(ledgerLog, "burnwick.ledger")

/// Others wait while a transaction is open.
constexpr std::size_t filesPerTransaction = 64;

/// More than any account has.
constexpr std::size_t maxLimits = 32;

/// Few enough for the memory, and enough for several threads.
constexpr std::size_t filesPerDecoding = 64;

struct RecalledFile {
    std::size_t index; ///< in the history
    StoredReading reading;
};

/// Sets the files' entries and positions. Throws DamagedLedger.
void decode(const std::vector<RecalledFile> &files, LogHistory &history) {
    // Starting a thread costs about as much as decoding this many.
    constexpr std::size_t linesWorthAThread = 500;
    std::size_t lines = 0;
    for (const RecalledFile &file : files)
        lines += file.reading.size();
    std::atomic<std::size_t> next = 0;
    runOnThreads(std::min<std::size_t>(std::thread::hardware_concurrency(), 1 + lines / linesWorthAThread),
                 [&] {
                     for (std::size_t i = next++; i < files.size(); i = next++) {
                         history.entries[files[i].index] = files[i].reading.decode();
                         history.positions[files[i].index] = files[i].reading.position();
                     }
                 });
}

} // namespace

Ledger::Ledger(const std::filesystem::path &folder, Patience patience)
    : m_folder(folder, patience)
    , m_patience(patience) {}

Ledger::~Ledger() = default;

std::filesystem::path Ledger::userFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation).toStdString() + "/burnwick";
}

void Ledger::beginSeries() {
    m_hasFailed = false;
    m_wasDoubted = false;
    m_wasMoved = false;
    // A series that did not reach its end, or a file that was moved.
    if (m_filesInTransaction > 0 || m_folder.isOther())
        close();
    if (m_database != nullptr)
        m_database->beginSeries();
}

/// Calls the function unless this series has failed, and again after damage. Returns whether it succeeded.
template <typename Work>
bool Ledger::attempt(Work work) {
    while (!m_hasFailed) {
        try {
            if (m_database == nullptr)
                open();
            work(*m_database);
            return true;
        } catch (const std::exception &error) {
            abandon(error);
        }
    }
    return false;
}

void Ledger::open() {
    m_database = m_folder.open();
    m_mayLackFiles = true;
}

/// Undoes what was not committed.
void Ledger::close() {
    m_database.reset();
    m_filesInTransaction = 0;
}

void Ledger::abandon(const std::exception &error) {
    close();
    m_hasFailed = true;
    if (!isDamage(error) || m_patience == Patience::brief)
        return complain("not used now: ", error);
    // SQLite reports bytes that could not be read for a moment as damage, too.
    if (!std::exchange(m_wasDoubted, true) && m_folder.isSound()) {
        m_hasFailed = false;
        return;
    }
    if (!m_folder.setAside())
        return complain("damaged and not used: ", error);
    complain("damaged and moved aside: ", error);
    m_hasFailed = std::exchange(m_wasMoved, true);
}

void Ledger::complain(const std::string &outcome, const std::exception &error) {
    if (m_complaints.insert(outcome + error.what()).second)
        qCWarning(ledgerLog, "%s: %s%s", m_folder.file().c_str(), outcome.c_str(), error.what());
}

void Ledger::recall(LogHistory &history) {
    const std::lock_guard lock(m_mutex);
    beginSeries();
    // Without logs nothing is stored, and no file is created.
    m_isIdle = m_hasFailed = history.files.empty() && m_folder.isUnused();
    m_isCurrent = false;
    attempt([&](LedgerDatabase &database) {
        if (m_keepsHistory)
            database.beginKeeping();
        database.beginReading();
        database.followOthers(m_withMessages);
        m_mayLackFiles |= database.hasFollowed();
        FileTable &files = database.files();
        std::vector<RecalledFile> recalled;
        for (std::size_t i = 0; i < history.files.size(); ++i) {
            const LogFile &file = history.files[i];
            LogEntries &entries = history.entries[i];
            if (!file.status.regular)
                continue;
            if (m_keepsHistory && m_mayLackFiles && entries != nullptr &&
                !files.isAt(file.path, history.positions[i]))
                entries = nullptr;
            if (entries != nullptr)
                continue;
            if (auto reading = files.find(file.path, m_withMessages))
                recalled.push_back({i, std::move(*reading)});
            if (recalled.size() == filesPerDecoding)
                decode(std::exchange(recalled, {}), history);
        }
        decode(recalled, history);
        database.commit();
        m_mayLackFiles = false;
    });
}

bool Ledger::keep(const std::filesystem::path &file, const ReadingPosition *continued,
                  const FileReading &reading) {
    const std::lock_guard lock(m_mutex);
    bool isStored = true;
    attempt([&](LedgerDatabase &database) {
        if (m_filesInTransaction == 0)
            database.beginWriting();
        ++m_filesInTransaction;
        isStored = database.keep(file, continued, reading);
        if (m_filesInTransaction == filesPerTransaction)
            commit();
    });
    return isStored;
}

std::optional<std::vector<LogEntries>> Ledger::finish(const LogHistory *history) {
    const std::lock_guard lock(m_mutex);
    m_mayLackFiles |= history == nullptr;
    const bool isFinished = attempt([&](LedgerDatabase &database) {
        if (m_filesInTransaction > 0)
            commit();
        // Without the new path of a moved log in it, the old path would look like that of a deleted log.
        if (history == nullptr || (m_keepsHistory && m_mayLackFiles))
            return;
        database.settle(*history);
        if (m_keepsHistory) {
            m_kept = database.kept();
            // Another process may have stored logs that this history was listed too early for.
            m_mayLackFiles |= database.hasFollowed();
        }
    });
    m_isCurrent = history != nullptr && (m_isIdle || (isFinished && !m_mayLackFiles));
    if (!m_keepsHistory)
        return std::vector<LogEntries>();
    if (isFinished && m_mayLackFiles)
        return std::nullopt;
    if (isFinished)
        backUp(&LedgerFolder::backUpDaily);
    return m_kept;
}

/// Calls the folder's function. Its failure is no failure of the series.
void Ledger::backUp(void (LedgerFolder::*function)(LedgerDatabase &)) {
    try {
        (m_folder.*function)(*m_database);
    } catch (const std::exception &error) {
        if (isDamage(error))
            abandon(error);
        else
            complain("without a backup: ", error);
        close();
    }
}

void Ledger::commit() {
    m_database->commit();
    m_filesInTransaction = 0;
}

void Ledger::setKeepsHistory(bool on) {
    const std::lock_guard lock(m_mutex);
    m_keepsHistory = on;
    m_mayLackFiles = true;
}

bool Ledger::forgetKeptHistory(bool withLines) {
    const std::lock_guard lock(m_mutex);
    bool isForgotten = m_folder.isUnused();
    beginSeries();
    if (!isForgotten)
        attempt([&](LedgerDatabase &database) {
            isForgotten = database.endKeeping(withLines, [this] { m_folder.removeCopies(); });
        });
    if (isForgotten) {
        m_keepsHistory = false;
        m_kept.clear();
    }
    return isForgotten;
}

/// Calls the function at most once, as a series after one that reached its end.
template <typename Work>
bool Ledger::attemptOnce(Work work) {
    const std::lock_guard lock(m_mutex);
    if (!m_isCurrent)
        return false;
    beginSeries();
    m_wasDoubted = m_wasMoved = true;
    return attempt(work);
}

bool Ledger::exportLines(const std::function<void(const SessionLines &)> &use) {
    return attemptOnce([&use](LedgerDatabase &database) { database.exportLines(use); });
}

std::optional<std::size_t> Ledger::importLines(const std::vector<SessionLines> &sessions) {
    std::size_t count = 0;
    const bool isDone = attemptOnce([&](LedgerDatabase &database) {
        database.beginKeeping();
        count = database.importLines(sessions);
        backUp(&LedgerFolder::backUp);
    });
    return isDone ? std::optional(count) : std::nullopt;
}

/// Calls the function as a series inside the present one, if there is one.
template <typename Work>
bool Ledger::attemptAside(Work work) {
    const std::lock_guard lock(m_mutex);
    if (m_filesInTransaction > 0)
        attempt([this](LedgerDatabase &) { commit(); });
    const auto state = std::tuple(m_hasFailed, m_wasDoubted, m_wasMoved);
    beginSeries();
    const bool isDone = attempt(work);
    std::tie(m_hasFailed, m_wasDoubted, m_wasMoved) = state;
    return isDone;
}

std::optional<std::vector<std::vector<LimitSample>>> Ledger::recordLimits(std::span<const Limit> limits) {
    std::vector<std::vector<LimitSample>> samples;
    const bool isDone = attemptAside([&](LedgerDatabase &database) {
        samples = database.recordLimits(limits.first(std::min(limits.size(), maxLimits)));
    });
    for (const Limit &limit : limits.subspan(std::min(limits.size(), maxLimits)))
        samples.emplace_back(1, LimitSample{limit.observedAt, limit.usedPct});
    return isDone ? std::optional(std::move(samples)) : std::nullopt;
}

std::vector<Limit> Ledger::lastLimits(Instant now) {
    std::vector<Limit> limits;
    if (!m_folder.isUnused())
        attemptAside([&](LedgerDatabase &database) { limits = database.lastLimits(now); });
    return limits;
}

} // namespace burnwick
