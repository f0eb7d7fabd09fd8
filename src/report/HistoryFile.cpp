// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/HistoryFile.h"

#include "display/DisplayFormat.h"
#include "forms/TerminalText.h"
#include "ledger/HistoryCsv.h"
#include "ledger/Ledger.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

#include <algorithm>
#include <stdexcept>
#include <unordered_set>

#include <sys/stat.h>
#include <unistd.h>

namespace burnwick {

namespace {

/// Bytes that are written or read at once.
constexpr std::size_t blockSize = std::size_t{1} << 18U;

const QString standardStream = QStringLiteral("-");

[[noreturn]] void fail(const char *action, const QString &file, const std::string &reason) {
    throw std::runtime_error(std::string("cannot ") + action + ' ' + printableText(file.toStdString()) +
                             ": " + reason);
}

struct Counts {
    std::int64_t messages = 0;
    std::unordered_set<InternedString> sessions;
};

/// Returns whether the sum of a million lines like these has less than 64 bits.
bool hasPlausibleCounts(const SessionLines &lines) {
    constexpr std::int64_t most = 1'000'000'000'000;
    return std::ranges::all_of(lines.entries, [](const JSONLEntry &entry) {
        const SessionTokens &counts = entry.counts();
        const auto [least, greatest] =
            std::minmax({counts.input, counts.output, counts.cacheCreation, counts.cacheRead});
        return least >= 0 && greatest <= most;
    });
}

/// Returns whether all was written. Sets the counts.
bool writeHistory(Ledger &ledger, QFileDevice &device, Counts &counts) {
    std::string text = historyCsvHeader();
    const auto writeText = [&] {
        const bool isWritten = device.write(text.data(), std::ssize(text)) == std::ssize(text);
        text.clear();
        return isWritten;
    };
    bool isWritten = true;
    const bool isKnown = ledger.exportLines([&](const SessionLines &lines) {
        appendHistoryCsv(text, lines);
        counts.messages += std::ssize(lines.entries);
        counts.sessions.insert(lines.session);
        if (text.size() >= blockSize)
            isWritten = writeText() && isWritten;
    });
    if (!isKnown)
        throw std::runtime_error("cannot export: the ledger cannot be read now; try again later");
    return writeText() && isWritten && device.flush();
}

} // namespace

std::string exportHistory(Ledger &ledger, const QString &file) {
    Counts counts;
    if (const QFileInfo old(file);
        file == standardStream || (old.exists() && !old.isFile() && !old.isDir())) {
        QFile device(file);
        const bool isOpen = file == standardStream ? device.open(STDOUT_FILENO, QIODevice::WriteOnly)
                                                   : device.open(QIODevice::WriteOnly);
        if (!isOpen || !writeHistory(ledger, device, counts))
            fail("write", file, device.errorString().toStdString());
    } else {
        ::umask(S_IRWXG | S_IRWXO); // private before its permissions are set
        QSaveFile device(file);
        // QSaveFile alone would ignore a full disk in its last flush and its sync.
        if (!device.open(QIODevice::WriteOnly) ||
            !device.setPermissions(QFile::ReadOwner | QFile::WriteOwner) ||
            !writeHistory(ledger, device, counts) || ::fsync(device.handle()) != 0 || !device.commit())
            fail("write", file, device.errorString().toStdString());
    }
    return "Exported " + countText(counts.messages, "message") + " of " +
           countText(std::ssize(counts.sessions), "session") + " to " + printableText(file.toStdString()) +
           ".\n";
}

std::string importHistory(Ledger &ledger, const QString &file) {
    QFile device(file);
    const bool isOpen = file == standardStream ? device.open(STDIN_FILENO, QIODevice::ReadOnly)
                                               : device.open(QIODevice::ReadOnly);
    if (!isOpen)
        fail("read", file, device.errorString().toStdString());
    std::vector<SessionLines> sessions;
    try {
        HistoryCsvReader reader;
        for (QByteArray block; block = device.read(blockSize), !block.isEmpty();)
            reader.add({block.data(), static_cast<std::size_t>(block.size())});
        if (device.error() != QFile::NoError)
            fail("read", file, device.errorString().toStdString());
        sessions = reader.finish();
    } catch (const MalformedHistory &error) {
        fail("import", file, error.what());
    }
    if (!std::ranges::all_of(sessions, hasPlausibleCounts))
        fail("import", file, "a count of tokens is not plausible");
    const auto imported = ledger.importLines(sessions);
    if (!imported)
        fail("import", file, "the ledger cannot be written now; try again later");
    std::int64_t known = -static_cast<std::int64_t>(*imported);
    for (const SessionLines &lines : sessions)
        known += std::ssize(lines.entries);
    const std::string added = "Imported " + countText(static_cast<std::int64_t>(*imported), "message");
    return known == 0 ? added + ".\n"
                      : added + "; " + countText(known, "message") + (known == 1 ? " was" : " were") +
                            " known already.\n";
}

} // namespace burnwick
