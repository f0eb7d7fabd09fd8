// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/LogFolders.h"

#include "logs/JSONLParser.h"
#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <map>

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using Paths = std::vector<fs::path>;
using test::usageLine;

TEST(LogFoldersTest, FoldersAreNamedInTheirOrderAndOnce) {
    const test::TemporaryDirectory directory;
    const fs::path home = directory.path();
    fs::create_directories(home / "box/projects");
    const std::string usual = home / ".claude/projects";
    const std::string xdg = home / ".config/claude/projects";
    const struct {
        std::map<std::string, std::string> environment;
        std::vector<std::string> chosen;
        std::vector<std::string> logs;
    } rows[] = {
        {{}, {}, {usual, xdg}},
        {{{"CLAUDE_CONFIG_DIR", ""}, {"XDG_CONFIG_HOME", "relative"}}, {""}, {usual, xdg}},
        {{{"CLAUDE_CONFIG_DIR", "/a"}, {"XDG_CONFIG_HOME", "/x/"}},
         {},
         {usual, "/a/projects", "/x/claude/projects"}},
        {{{"CLAUDE_CONFIG_DIR", "/b/, ~/c ,,/b, ~/.claude"}},
         {},
         {usual, "/b/projects", home / "c/projects", xdg}},
        {{},
         {"/logs", "/x/projects/", "~/box", "box", "~"},
         {usual, xdg, "/logs", "/x/projects", home / "box/projects", home}},
        {{}, {"~/.claude", usual, "/a//b/../c"}, {usual, xdg, home / ".claude", "/a/c"}},
    };
    for (const auto &row : rows) {
        const auto environment = [&row](const char *name) {
            const auto found = row.environment.find(name);
            return found != row.environment.end() ? std::optional(found->second) : std::nullopt;
        };
        const auto folders = claudeFolders(home, row.chosen, environment);
        EXPECT_EQ(logFoldersOf(folders), Paths(row.logs.begin(), row.logs.end()));
        for (const ClaudeFolder &folder : folders) {
            const bool isConfiguration = folder.logs == folder.configuration / "projects";
            EXPECT_TRUE(isConfiguration || (folder.isChosen && folder.logs == folder.configuration));
        }
    }
}

TEST(LogFoldersTest, OneNameOfAFolderAndTheOuterOfNestedOnesStay) {
    const test::TemporaryDirectory directory;
    const fs::path top = directory.path();
    fs::create_directories(top / "a/b/c");
    fs::create_directories(top / "ab");
    fs::create_directory_symlink("a", top / "link");
    fs::create_directory_symlink("../ab", top / "a/out");
    fs::create_directory_symlink("loop", top / "loop");
    const std::pair<std::vector<const char *>, std::vector<const char *>> rows[] = {
        {{"a"}, {"a"}},
        {{"a", "ab", "a"}, {"a", "ab"}},
        {{"link", "a"}, {"link"}},
        {{"a/b/c", "link/b"}, {"link/b"}},
        {{"a/b/c", "a", "link/b"}, {"a"}},
        {{"a", "a/out", "ab"}, {"a", "a/out"}},
        {{"missing", "a", "missing/b", "loop"}, {"missing", "a", "missing/b", "loop"}},
    };
    for (const auto &[folders, distinct] : rows) {
        const auto below = [&top](const std::vector<const char *> &names) {
            Paths paths;
            for (const char *name : names)
                paths.push_back(top / name);
            return paths;
        };
        EXPECT_EQ(distinctFolders(below(folders)), below(distinct)) << folders.front();
    }
    EXPECT_EQ(folderErrorText(folderError(top / "missing")), "No such folder");
    EXPECT_EQ(folderErrorText(folderError(top / "loop")), "Too many levels of symbolic links");
    test::writeFile(top / "file", "");
    EXPECT_EQ(folderErrorText(folderError(top / "file")), "Not a folder");
    EXPECT_FALSE(folderError(top / "link"));
}

TEST(LogFoldersTest, ALogInSeveralFoldersCountsOnceAlsoWhileItGrows) {
    const test::LogHome home;
    const Instant modified(std::chrono::seconds(1'748'000'000));
    const std::string line = usageLine("2025-06-01T12:00:00.000Z", 1, 0);
    home.add("p/a.jsonl", line, modified);
    const fs::path more = home.path() / "more";
    test::writeFile(more / "deep/b.jsonl", line);
    fs::create_directory_symlink(home.projects(), home.path() / "link");
    fs::create_directory_symlink("..", more / "deep/up");
    const JSONLParser parser(
        {home.projects(), home.path() / "missing", home.path() / "link", more / "deep", more});
    auto history = parser.parseAllEntries();
    ASSERT_EQ(history->files.size(), 2U);
    for (const LogFile &file : history->files)
        EXPECT_TRUE(file.path == home.projects() / "p/a.jsonl" || file.path == more / "deep/b.jsonl")
            << file.path;
    EXPECT_EQ(parser.parseRecentEntries(modified)->files.size(), 2U);

    home.add("p/new.jsonl", line, modified);
    history = parser.parseChangedEntries(*history,
                                         {home.projects() / "p/new.jsonl", home.path() / "link/p/new.jsonl"});
    ASSERT_EQ(history->files.size(), 3U);
    test::writeFile(more / "deep/b.jsonl", line + line);
    history = parser.parseChangedEntries(*history, {home.path() / "link/p/a.jsonl", more / "deep/b.jsonl"});
    ASSERT_EQ(history->files.size(), 3U);
    EXPECT_EQ(JSONLParser::calculateSessionTokens(history->entries).input, 4);
}

} // namespace
} // namespace burnwick
