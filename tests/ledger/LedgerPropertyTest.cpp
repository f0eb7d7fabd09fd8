// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/Ledger.h"

#include "ledger/SeenLines.h"
#include "logs/JSONLParser.h"
#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <random>

namespace burnwick {
namespace {

namespace fs = std::filesystem;

/// Changes a log tree at random, as Claude Code, users and other programs do.
class ChangingTree {
public:
    explicit ChangingTree(const test::LogHome &home, unsigned seed)
        : m_home(home)
        , m_random(seed) {}

    [[nodiscard]] std::size_t below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(m_random);
    }

    struct Change {
        std::string text;
        std::optional<fs::path> file; ///< null if folders or several files changed
    };
    Change change() {
        m_changed.reset();
        const std::string text = act();
        return {text, m_changed};
    }

private:
    std::string act() {
        const auto file = chosenFile();
        m_changed = file;
        if (!file || (fileCount() < 12 && below(12) == 0))
            return create();
        const auto name = [&](const char *action) { return action + (" " + file->filename().string()); };
        switch (below(17)) {
        case 0:
        case 1:
        case 2:
            append(*file, line());
            return name("append");
        case 3:
            append(*file, line() + line().substr(0, below(40)));
            return name("append half a line");
        case 4:
            append(*file, line().substr(below(40)));
            return name("append the rest");
        case 5:
            append(*file, below(2) == 0 ? "\xFF" : "\xC3\n");
            return name("append no UTF-8");
        case 6:
            fs::resize_file(*file, below(fs::file_size(*file) + 1));
            return name("truncate");
        case 7:
            alterDigits(*file);
            return name("rewrite in place");
        case 8:
            test::writeFile(m_home.path() / "draft", test::bytesOf(*file) + line());
            fs::rename(m_home.path() / "draft", *file);
            return name("replace");
        case 9:
            fs::remove(*file);
            return name("delete");
        case 10:
            test::setModified(*file, anyTime());
            return name("touch");
        case 11:
            m_changed.reset();
            moveFolder(file->parent_path());
            return name("move the folder of");
        case 12:
            alterDigits(*file, 2000); // a part that is compared
            append(*file, line());
            return name("rewrite and append");
        case 13:
            m_changed.reset();
            fs::rename(*file, file->parent_path() / (std::to_string(m_next++) + ".jsonl"));
            return name("rename");
        case 14:
            m_changed.reset();
            fs::create_directories(m_home.path() / "away");
            fs::rename(*file, m_home.path() / "away" / file->filename());
            return name("take away");
        case 15:
            m_changed.reset();
            return bringBack();
        default:
            alterDigits(*file);
            test::setModified(*file, anyTime());
            return name("rewrite and set the time of");
        }
    }

    [[nodiscard]] std::vector<fs::path> files() const {
        std::vector<fs::path> files;
        for (const auto &entry : fs::recursive_directory_iterator(m_home.projects())) {
            if (entry.is_regular_file())
                files.push_back(entry.path());
        }
        std::ranges::sort(files);
        return files;
    }
    [[nodiscard]] std::size_t fileCount() const { return files().size(); }
    std::optional<fs::path> chosenFile() {
        const auto all = files();
        return all.empty() ? std::nullopt : std::optional(all[below(all.size())]);
    }
    std::string create() {
        const auto name = "p" + std::to_string(below(4)) + (below(3) == 0 ? "/sub/" : "/") +
                          std::to_string(m_next++) + ".jsonl";
        std::string bytes;
        // Some are longer than the samples that are compared.
        for (std::size_t lines = below(10) == 0 ? 300 : below(4); lines > 0; --lines)
            bytes += line();
        m_changed = m_home.projects() / name;
        test::writeFile(*m_changed, bytes);
        return "create " + name;
    }
    void append(const fs::path &file, std::string_view bytes) {
        std::ofstream(file, std::ios::app | std::ios::binary) << bytes;
    }
    /// Keeps the size and the place of the file.
    void alterDigits(const fs::path &file, std::size_t within = SIZE_MAX) {
        std::string bytes = test::bytesOf(file);
        const std::string key = "\"input_tokens\":";
        std::size_t at = bytes.find(key, bytes.empty() ? 0 : below(std::min(bytes.size(), within)));
        if (at == std::string::npos || at + key.size() >= bytes.size())
            return;
        std::fstream out(file, std::ios::in | std::ios::out | std::ios::binary);
        out.seekp(static_cast<std::streamoff>(at + key.size()));
        out << below(10);
    }
    std::string bringBack() {
        std::error_code none;
        for (const auto &entry : fs::directory_iterator(m_home.path() / "away", none)) {
            fs::rename(entry.path(), m_home.projects() / entry.path().filename());
            return "bring back " + entry.path().filename().string();
        }
        return "do nothing";
    }
    void moveFolder(const fs::path &folder) {
        if (folder != m_home.projects())
            fs::rename(folder, m_home.projects() / ("moved" + std::to_string(m_next++)));
    }
    std::string line() {
        if (below(4) == 0)
            return "{\"type\":\"user\",\"message\":{\"content\":\"\xC3\xA4\"}}\n";
        return R"({"uuid":")" + std::to_string(m_next++) + R"(","cwd":"/home/)" + std::to_string(below(3)) +
               R"(","isSidechain":)" + (below(2) == 0 ? "true," : "false,") +
               test::usageLine("2025-06-0" + std::to_string(1 + below(9)) + "T12:00:00.00" +
                                   std::to_string(below(10)) + "Z",
                               static_cast<long long>(10 + below(80)), static_cast<long long>(below(5000)), 1,
                               2, below(2) == 0 ? "opus" : "sonnet")
                   .substr(1);
    }
    Instant anyTime() { return Instant(std::chrono::seconds(1'740'000'000 + below(80'000'000))); }

    const test::LogHome &m_home;
    std::mt19937 m_random;
    int m_next = 0;
    std::optional<fs::path> m_changed;
};

std::string difference(const LogHistory &history, const LogHistory &fresh) {
    if (history.files.size() != fresh.files.size())
        return "other files";
    for (std::size_t i = 0; i < fresh.files.size(); ++i) {
        if (history.files[i].path != fresh.files[i].path)
            return "another order";
        const auto &entries = history.entries[i];
        if ((entries == nullptr) != (fresh.entries[i] == nullptr) ||
            (entries != nullptr && *entries != *fresh.entries[i]))
            return "other entries in " + fresh.files[i].path.string();
    }
    return "";
}

class LedgerProperty : public testing::TestWithParam<unsigned> {};

TEST_P(LedgerProperty, WithTheLedgerEveryHistoryEqualsAFreshReading) {
    const test::LogHome home;
    fs::create_directories(home.projects());
    ChangingTree tree(home, GetParam());
    const JSONLParser parser(home.path(), 1);
    const bool keepsHistory = GetParam() % 2 == 0;
    SeenLines seen;
    // A program that watches the tree, one that looks now and then, and one that starts anew each time.
    Ledger ledgers[] = {Ledger(home.path() / "data"), Ledger(home.path() / "data")};
    std::shared_ptr<const LogHistory> last[2];
    std::string changes;
    const auto differenceOf = [&](const LogHistory &history) {
        const std::string text = difference(history, *parser.parseAllEntries());
        return text.empty() ? seen.difference(history) : text;
    };
    for (Ledger &ledger : ledgers)
        ledger.setKeepsHistory(keepsHistory);
    for (int step = 0; step < 2'500; ++step) {
        const auto change = tree.change();
        changes = change.text + "\n" + changes.substr(0, 600);
        if (keepsHistory)
            seen.see(allLogFiles({home.projects()}));
        const bool isOtherFirst = tree.below(2) == 0;
        for (const std::size_t turn : {0, 1}) {
            const std::size_t program = isOtherFirst ? 1 - turn : turn;
            if (program == 1 && tree.below(7) != 0)
                continue;
            auto history = program == 0 && change.file && last[0] != nullptr
                               ? parser.parseChangedEntries(*last[0], {*change.file}, &ledgers[0])
                               : parser.parseAllEntries(last[program].get(), &ledgers[program]);
            if (history != nullptr)
                last[program] = std::move(history);
            ASSERT_EQ(differenceOf(*last[program]), "")
                << "program " << program << " after step " << step << ": " << changes;
        }
        if (tree.below(4) == 0) {
            Ledger ledger(home.path() / "data");
            ledger.setKeepsHistory(keepsHistory);
            ASSERT_EQ(differenceOf(*parser.parseAllEntries(nullptr, &ledger)), "")
                << "a new program after step " << step << ": " << changes;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, LedgerProperty, testing::Range(1U, 5U));

} // namespace
} // namespace burnwick
