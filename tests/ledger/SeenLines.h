// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/LogFileReader.h"
#include "logs/LogHistory.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace burnwick {

/// All lines that were once in logs and are no longer, by a simple rule that knows each state of the tree.
class SeenLines {
public:
    void see(const std::vector<LogFile> &files) {
        std::map<std::filesystem::path, File> present;
        std::map<std::string, std::set<std::uint64_t>> keys;
        for (const LogFile &file : files) {
            File &lines = present[file.path];
            lines.inode = file.status.inode;
            const auto reading = LogFileReader(LineSelection::usageOnly).readFile(file.path);
            for (std::size_t i = 0; i < reading->newDetails.size(); ++i) {
                lines.entries[reading->newDetails[i].lineKey] = reading->entries->at(i);
                keys[file.path.stem().string()].insert(reading->newDetails[i].lineKey);
            }
        }
        for (auto &[path, lines] : m_files) {
            for (const auto &[other, renamed] : present) {
                if (!present.contains(path) && renamed.inode == lines.inode) {
                    for (const auto &[key, entry] : renamed.entries)
                        lines.entries.erase(key);
                }
            }
            m_gone[path.stem().string()].insert(lines.entries.begin(), lines.entries.end());
        }
        for (auto &[session, lines] : m_gone)
            std::erase_if(lines, [&](const auto &line) { return keys[session].contains(line.first); });
        m_files = std::move(present);
    }

    [[nodiscard]] std::string difference(const LogHistory &history) const {
        std::map<std::string, std::multiset<std::int64_t>> kept;
        for (const LogEntries &list : history.kept) {
            for (const JSONLEntry &entry : *list)
                kept[std::string(entry.sessionId().view())].insert(valueOf(entry));
        }
        std::map<std::string, std::multiset<std::int64_t>> gone;
        for (const auto &[session, lines] : m_gone) {
            for (const auto &[key, entry] : lines)
                gone[session].insert(valueOf(entry));
        }
        for (const auto &[session, lines] : gone) {
            if (kept[session] != lines)
                return std::to_string(kept[session].size()) + " instead of " + std::to_string(lines.size()) +
                       " kept lines of " + session;
        }
        return kept.size() == gone.size() ? "" : "kept lines of another session";
    }

private:
    struct File {
        std::uint64_t inode = 0;
        std::map<std::uint64_t, JSONLEntry> entries; ///< by line
    };
    static std::int64_t valueOf(const JSONLEntry &entry) {
        return entry.counts().input * 10'000 + entry.counts().output;
    }

    std::map<std::filesystem::path, File> m_files;
    std::map<std::string, std::map<std::uint64_t, JSONLEntry>> m_gone;
};

} // namespace burnwick
