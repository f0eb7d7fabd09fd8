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
    const char *path;
    const char *exec;
};

constexpr Program programs[] = {
    {"/home/ann/Büro/日本/burnwick", "/home/ann/Büro/日本/burnwick"},
    {"/home/ann/my programs/burnwick", R"("/home/ann/my programs/burnwick")"},
    {R"(/a/say "hi"/burnwick)", R"("/a/say \\"hi\\"/burnwick")"},
    {R"(/a/back\slash/burnwick)", R"("/a/back\\\\slash/burnwick")"},
    {"/a/$HOME/burnwick", R"("/a/\\$HOME/burnwick")"},
    {"/a/`date`/burnwick", R"("/a/\\`date\\`/burnwick")"},
    {"/a/%f %%/burnwick", R"(nice -n 0 "/a/%%f %%%%/burnwick")"},
    {R"(/a/50% of \ "$1"=x/burnwick)", R"(nice -n 0 "/a/50%% of \\\\ \\"\\$1\\"=x/burnwick")"},
    {"/a/x;y&z|(1)<2>*?#~/burnwick", R"("/a/x;y&z|(1)<2>*?#~/burnwick")"},
    {"/a/two\nlines\tand\rmore/burnwick", R"("/a/two\nlines\tand\rmore/burnwick")"},
};

TEST(AutostartEntry, QuotesTheProgramAndIsRecognised) {
    for (const Program &program : programs) {
        const std::string entry = autostartEntry(program.path);
        EXPECT_TRUE(entry.starts_with("[Desktop Entry]\nExec=" + std::string(program.exec) + "\nTryExec="))
            << entry;
        EXPECT_TRUE(isUnchangedEntry(entry)) << entry;
    }
}

/// Desktops read the entry with GLib or by the same rules.
TEST(AutostartEntry, GLibStartsEachProgram) {
    const test::TemporaryDirectory directory;
    for (const Program &program : programs) {
        const std::string path = directory.path().string() + program.path;
        test::writeProgram(path, "#!/bin/sh\n: > \"$0.started\"\n");
        const auto file = directory.path() / "burnwick.desktop";
        test::writeFile(file, autostartEntry(path));
        QProcess launcher;
        launcher.setProcessChannelMode(QProcess::MergedChannels);
        launcher.start(QStringLiteral("gio"),
                       {QStringLiteral("launch"), QString::fromStdString(file.string())});
        if (!launcher.waitForStarted())
            GTEST_SKIP() << "gio is not installed";
        ASSERT_TRUE(launcher.waitForFinished());
        EXPECT_EQ(launcher.exitCode(), 0) << program.path << launcher.readAll().toStdString();
        EXPECT_TRUE(launcher.exitCode() != 0 ||
                    waitFor([&path] { return std::filesystem::exists(path + ".started"); }))
            << program.path;
    }
}

TEST(AutostartEntry, IsValidForEachProgram) {
    const test::TemporaryDirectory directory;
    for (const Program &program : programs) {
        const auto file = directory.path() / "burnwick.desktop";
        test::writeFile(file, autostartEntry(program.path));
        QProcess validator;
        validator.setProcessChannelMode(QProcess::MergedChannels);
        validator.start(QStringLiteral("desktop-file-validate"), {QString::fromStdString(file.string())});
        if (!validator.waitForStarted())
            GTEST_SKIP() << "desktop-file-validate is not installed";
        ASSERT_TRUE(validator.waitForFinished());
        EXPECT_EQ(validator.readAll().toStdString(), "") << program.path;
        EXPECT_EQ(validator.exitCode(), 0) << program.path;
    }
}

TEST(AutostartEntry, IsOnUnlessSomethingKeepsTheDesktopFromStarting) {
    struct Case {
        const char *entry;
        bool on;
    };
    const Case cases[] = {
        {"", false},
        {"[Desktop Entry]\nName=Burnwick\n", false},
        {"# a remark\n\n[Desktop Entry]\r\nExec = burnwick\r\n", true},
        {"[Desktop Entry]\nHidden = true \nExec=burnwick\n", false},
        {"[Desktop Entry]\nExec=burnwick\n#Hidden=true\n", true},
        {"[Desktop Entry]\nExec=burnwick\n[Desktop Action x]\nHidden=true\n", true},
        {"[Desktop Action x]\nExec=burnwick\n[Desktop Entry]\n", false},
        {"[Desktop Entry]\nExec=burnwick\nX-GNOME-Autostart-enabled=false\n", false},
        {"[Desktop Entry]\nExec=burnwick\nHidden=1", false},
    };
    for (const Case &c : cases)
        EXPECT_EQ(startsAtLogin(c.entry), c.on) << c.entry;
}

TEST(AutostartEntry, IsUnchangedOnlyByteByByte) {
    const struct {
        std::string entry;
        bool unchanged;
    } rows[] = {
        {formerEntry + mark, true},
        {formerEntry, true},
        {formerEntry + mark + "X-GNOME-Autostart-Delay=9\n", false},
        {formerEntry + "X-GNOME-Autostart-Delay=9\n", false},
        {"[Desktop Entry]\nExec=burnwick --new-instance" + formerEntry.substr(formerEntry.find("\nTry")),
         false},
        {"[Desktop Entry]\nType=Application\nName=Burnwick\nExec=burnwick\nTryExec=burnwick\n", false},
        {"", false},
    };
    for (const auto &row : rows)
        EXPECT_EQ(isUnchangedEntry(row.entry), row.unchanged) << row.entry;
}

TEST(AutostartEntry, IsSwitchedWithoutAnyOtherChange) {
    const std::string rest = "Exec = x\nName[de]=B\n[Desktop Action y]\nHidden=true";
    const std::string head = "# mine\n[Desktop Entry]\n";
    const struct {
        std::string entry, on, off;
    } rows[] = {
        {head + rest, head + rest, head + "Hidden=true\n" + rest},
        {head + "Hidden = 1\n" + rest, head + rest, head + "Hidden=true\n" + rest},
        {head + "X-GNOME-Autostart-enabled=false\n" + rest, head + rest,
         head + "Hidden=true\nX-GNOME-Autostart-enabled=false\n" + rest},
        {"junk\nHidden=true\n", "junk\nHidden=true\n", "junk\nHidden=true\n"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(switchedEntry(row.entry, true), row.on) << row.entry;
        EXPECT_EQ(switchedEntry(row.entry, false), row.off) << row.entry;
    }
}

} // namespace
} // namespace burnwick
