// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/login/AutostartEntry.h"
#include "support/LogTreeFixture.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QtCore/QProcess>

namespace burnwick {
namespace {

const std::string formerEntry = "[Desktop Entry]\n"
                                "Exec=burnwick\n"
                                "TryExec=burnwick\n"
                                "Type=Application\n"
                                "Name=Burnwick\n"
                                "Comment=Token usage, cost and quota of Claude Code at a glance\n"
                                "Icon=burnwick\n"
                                "Terminal=false\n";
const std::string mark = "X-Burnwick-Autostart=true\n";

struct Program {
    const char *path, *exec;
};

constexpr Program programs[] = {
    {"/home/ann/Büro/日本/burnwick", "/home/ann/Büro/日本/burnwick"},
    {"/home/ann/my programs/burnwick", R"("/home/ann/my programs/burnwick")"},
    {R"(/a/say "hi"/burnwick)", R"("/a/say \\"hi\\"/burnwick")"},
    {R"(/a/back\slash/burnwick)", R"("/a/back\\\\slash/burnwick")"},
    {"/a/$HOME/`date`/burnwick", R"("/a/\\$HOME/\\`date\\`/burnwick")"},
    {"/a/%f %%/burnwick", R"(nice -n 0 "/a/%%f %%%%/burnwick")"},
    {R"(/a/50% of \ "$1"=x/burnwick)", R"(nice -n 0 "/a/50%% of \\\\ \\"\\$1\\"=x/burnwick")"},
    {"/a/x;y&z|(1)<2>*?#~/burnwick", R"("/a/x;y&z|(1)<2>*?#~/burnwick")"},
    {"/a/two\nlines\tand\rmore/burnwick", R"("/a/two\nlines\tand\rmore/burnwick")"},
};

TEST(AutostartEntry, TheProgramIsQuotedAndRecognised) {
    for (const Program &program : programs) {
        const std::string entry = autostartEntry(program.path);
        EXPECT_TRUE(entry.starts_with("[Desktop Entry]\nExec=" + std::string(program.exec) + "\nTryExec="))
            << entry;
        EXPECT_TRUE(isUnchangedEntry(entry)) << entry;
    }
}

/// Runs the program on the entry for a program at that path; its exit code and output, absent without it.
std::optional<std::pair<int, std::string>> run(const QString &tool, const QStringList &arguments,
                                               const std::string &path) {
    const test::TemporaryDirectory directory;
    const auto file = directory.path() / "burnwick.desktop";
    test::writeFile(file, autostartEntry(path));
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(tool, arguments + QStringList{QString::fromStdString(file.string())});
    if (!process.waitForStarted() || !process.waitForFinished())
        return std::nullopt;
    return std::pair(process.exitCode(), process.readAll().toStdString());
}

/// Desktops read the entry with GLib or by the same rules.
TEST(AutostartEntry, EachEntryIsValidAndGLibStartsTheProgram) {
    const test::TemporaryDirectory directory;
    for (const Program &program : programs) {
        SCOPED_TRACE(program.path);
        const auto validated = run(QStringLiteral("desktop-file-validate"), {}, program.path);
        if (!validated)
            GTEST_SKIP() << "desktop-file-validate is not installed";
        EXPECT_EQ(*validated, std::pair(0, std::string()));
        const std::string path = directory.path().string() + program.path;
        test::writeProgram(path, "#!/bin/sh\n: > \"$0.started\"\n");
        const auto launched = run(QStringLiteral("gio"), {QStringLiteral("launch")}, path);
        if (!launched)
            GTEST_SKIP() << "gio is not installed";
        ASSERT_EQ(launched->first, 0) << launched->second;
        EXPECT_TRUE(waitFor([&path] { return std::filesystem::exists(path + ".started"); }));
    }
}

TEST(AutostartEntry, IsUnchangedOnlyByteByByte) {
    const std::pair<std::string, bool> rows[] = {
        {formerEntry + mark, true},
        {formerEntry, true},
        {formerEntry + mark + "X-GNOME-Autostart-Delay=9\n", false},
        {"[Desktop Entry]\nExec=burnwick --new-instance" + formerEntry.substr(formerEntry.find("\nTry")),
         false},
        {"[Desktop Entry]\nType=Application\nName=Burnwick\nExec=burnwick\nTryExec=burnwick\n", false},
        {"", false},
    };
    for (const auto &[entry, unchanged] : rows)
        EXPECT_EQ(isUnchangedEntry(entry), unchanged) << entry;
}

TEST(AutostartEntry, IsSwitchedByTheKeysThatKeepItFromStarting) {
    const std::string head = "# mine\n[Desktop Entry]\r\n";
    const std::string rest = "Exec = x\nName[de]=B\n#Hidden=true\n[Desktop Action y]\nHidden=true";
    const std::string noCommand = "[Desktop Action x]\nExec=x\n[Desktop Entry]\n";
    const std::string gnome = "X-GNOME-Autostart-enabled=false\n";
    const struct {
        std::string entry;
        bool starts;
        std::string on, off;
    } rows[] = {
        {head + rest, true, head + rest, head + "Hidden=true\n" + rest},
        {head + "Hidden = 1 \n" + rest, false, head + rest, head + "Hidden=true\n" + rest},
        {head + gnome + rest, false, head + rest, head + "Hidden=true\n" + gnome + rest},
        {head + "Hidden=false\n" + rest, true, head + "Hidden=false\n" + rest, head + "Hidden=true\n" + rest},
        {noCommand, false, noCommand, noCommand + "Hidden=true\n"},
        {"junk\nHidden=true\n", false, "junk\nHidden=true\n", "junk\nHidden=true\n"},
        {"", false, "", ""},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(startsAtLogin(row.entry), row.starts) << row.entry;
        EXPECT_EQ(switchedEntry(row.entry, true), row.on) << row.entry;
        EXPECT_EQ(switchedEntry(row.entry, false), row.off) << row.entry;
    }
}

} // namespace
} // namespace burnwick
