// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/login/AutostartEntry.h"
#include "platform/linux/login/AutostartLoginItem.h"
#include "support/EnvironmentVariable.h"
#include "support/LogTreeFixture.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QProcess>

#include <functional>

#include <sys/stat.h>

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using test::bytesOf;
using test::entriesOf;
using test::TemporaryDirectory;
using test::writeFile;

const char *const programs[] = {
    "/home/ann/Büro/日本/burnwick",   "/home/ann/my programs/burnwick", R"(/a/say "hi"/burnwick)",
    R"(/a/back\slash/burnwick)",      "/a/$HOME/`date`/burnwick",       "/a/%f %%/burnwick",
    R"(/a/50% of \ "$1"=x/burnwick)", "/a/x;y&z|(1)<2>*?#~/burnwick",   "/a/two\nlines\tand\rmore/burnwick",
};

/// Runs the tool on the file. Returns its output and a non-zero exit code; absent when it is not installed.
std::optional<std::string> outputOf(const QString &tool, const QStringList &arguments) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(tool, arguments);
    if (!process.waitForStarted() || !process.waitForFinished())
        return std::nullopt;
    const std::string code = process.exitCode() == 0 ? "" : std::to_string(process.exitCode());
    return process.readAll().toStdString() + code;
}

/// Desktops read the entry with GLib or by the same rules.
TEST(AutostartEntry, OfAnyPathIsValidRecognizedAndStartedByGLib) {
    const TemporaryDirectory directory;
    const auto file = directory.path() / "burnwick.desktop";
    const QString fileName = QString::fromStdString(file);
    for (const char *program : programs) {
        SCOPED_TRACE(program);
        const std::string path = directory.path().string() + program;
        const std::string entry = autostartEntry(path);
        EXPECT_TRUE(isUnchangedEntry(entry));
        writeFile(file, entry);
        test::writeProgram(path, "#!/bin/sh\n: > \"$0.started\"\n");
        const auto validated = outputOf(QStringLiteral("desktop-file-validate"), {fileName});
        const auto launched = outputOf(QStringLiteral("gio"), {QStringLiteral("launch"), fileName});
        if (!validated || !launched)
            GTEST_SKIP() << "desktop-file-validate or gio is not installed";
        ASSERT_EQ(*validated + *launched, "");
        EXPECT_TRUE(waitFor([&path] { return fs::exists(path + ".started"); }));
    }
}

TEST(AutostartEntry, IsSwitchedByItsKeys) {
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

class LoginItemTest : public testing::Test {
protected:
    LoginItemTest() { test::writeProgram(m_program, "#!/bin/sh\n"); }

    TemporaryDirectory m_directory;
    fs::path m_program = m_directory.path() / "my programs" / "burnwick";
    fs::path m_folder = m_directory.path() / "config" / "autostart";
    fs::path m_file = m_folder / "burnwick.desktop";
    AutostartLoginItem m_item{m_folder, QString::fromStdString(m_program.string())};
};

TEST_F(LoginItemTest, WritesOnlyChangesAndNoLink) {
    EXPECT_EQ(m_item.state(), LoginItemState::off);
    EXPECT_FALSE(m_item.unregisterItem()) << "nothing to do";
    EXPECT_FALSE(fs::exists(m_folder));
    EXPECT_FALSE(m_item.registerItem());
    const auto written = fs::last_write_time(m_file);
    EXPECT_FALSE(m_item.registerItem());
    EXPECT_EQ(fs::last_write_time(m_file), written) << "written without a change";

    fs::rename(m_file, m_directory.path() / "dotfile");
    fs::create_symlink(m_directory.path() / "dotfile", m_file);
    EXPECT_FALSE(m_item.registerItem());
    EXPECT_TRUE(m_item.unregisterItem()) << "other programs may use the link's target";
    EXPECT_EQ(m_item.state(), LoginItemState::on);
    EXPECT_TRUE(fs::is_symlink(m_file));
}

TEST_F(LoginItemTest, FailuresChangeNothing) {
    const fs::path other = m_directory.path() / "other.desktop";
    const auto replaceFolder = [&](auto make) {
        fs::remove(m_folder);
        make();
    };
    const struct {
        const char *what;
        std::function<void()> arrange;
        bool startsNothing = false; ///< so that it can be switched off
    } rows[] = {
        {"a directory", [&] { writeFile(m_file / "kept", "x"); }},
        {"a pipe", [&] { ASSERT_EQ(::mkfifo(m_file.c_str(), 0600), 0); }},
        {"a huge file", [&] { writeFile(m_file, std::string(100'000, '\n')); }},
        {"a broken link", [&] { fs::create_symlink(other, m_file); }},
        {"a link to a hidden entry",
         [&] {
             writeFile(other, "[Desktop Entry]\nExec=other\nHidden=true\n");
             fs::create_symlink(other, m_file);
         },
         true},
        {"an entry that starts nothing", [&] { writeFile(m_file, "[Desktop Entry]\nName=B\n"); }, true},
        {"not an entry", [&] { writeFile(m_file, "\x7f\nExec=other\n"); }, true},
        {"a file as the folder", [&] { replaceFolder([&] { writeFile(m_folder, "x"); }); }, true},
        {"a broken link as the folder", [&] { replaceFolder([&] { fs::create_symlink(other, m_folder); }); },
         true},
        {"no program", [&] { fs::remove(m_program); }, true},
    };
    const auto picture = [this] {
        std::string text;
        for (const auto &entry : fs::recursive_directory_iterator(m_directory.path()))
            text += entry.path().string() + ' ' + std::to_string(int(entry.symlink_status().type())) + ' ' +
                    (entry.symlink_status().type() == fs::file_type::regular ? bytesOf(entry.path()) : "") +
                    '\n';
        return text;
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        fs::create_directories(m_folder);
        row.arrange();
        const std::string before = picture();
        const auto failure = m_item.registerItem();
        EXPECT_TRUE(failure && failure->reason.find("/config") != std::string::npos);
        EXPECT_EQ(m_item.state(), LoginItemState::off);
        EXPECT_EQ(!m_item.unregisterItem(), row.startsNothing);
        EXPECT_FALSE(m_item.restoreChoice(false));
        EXPECT_EQ(picture(), before);
        fs::remove_all(m_folder.parent_path());
        fs::remove(other);
    }
}

TEST_F(LoginItemTest, AnEarlierChoiceYieldsToTheUsersChanges) {
    const std::string fresh = autostartEntry(m_program.string());
    const std::string former = fresh.substr(0, fresh.find("X-Burnwick"));
    const std::string moved = autostartEntry("/elsewhere/burnwick");
    const std::string hidden = fresh + "Hidden=true\n";
    const std::string disabled = fresh + "X-GNOME-Autostart-enabled=false\n";
    const std::string delayed = fresh + "X-GNOME-Autostart-Delay=9\n";
    const std::string delayedHidden = "[Desktop Entry]\nHidden=true\n" + delayed.substr(delayed.find("Exec"));
    const std::string lower = fresh.substr(0, 21) + "nice " + fresh.substr(21);
    const std::string lowerHidden = "[Desktop Entry]\nHidden=true\n" + lower.substr(lower.find("Exec"));
    const std::string users = "[Desktop Entry]\nType=Application\nName=Mine\nExec=env A=1 burnwick\n";
    const std::string usersHidden = "[Desktop Entry]\nHidden=true\n" + users.substr(users.find("Type"));
    const struct {
        const char *what;
        std::string before;
        std::string restoredOn, restoredOff; ///< at a launch
        std::string on, off;                 ///< when the user flips the switch
    } rows[] = {
        {"nothing", "", fresh, "", fresh, ""},
        {"unchanged", fresh, fresh, "", fresh, ""},
        {"of a former version", former, fresh, "", fresh, ""},
        {"of a program that moved", moved, fresh, "", fresh, ""},
        {"hidden", hidden, hidden, hidden, fresh, hidden},
        {"disabled", disabled, disabled, disabled, fresh, disabled},
        {"delayed", delayed, delayed, delayed, delayed, delayedHidden},
        {"delayed, hidden", delayedHidden, delayedHidden, delayedHidden, delayed, delayedHidden},
        {"of another priority", lower, lower, lower, lower, lowerHidden},
        {"the user's", users, users, users, users, usersHidden},
        {"the user's, hidden", usersHidden, usersHidden, usersHidden, users, usersHidden},
    };
    using Call = std::function<std::optional<LoginItemFailure>()>;
    const auto after = [this](const std::string &before, const Call &call) {
        fs::remove(m_file);
        if (!before.empty())
            writeFile(m_file, before);
        EXPECT_FALSE(call());
        return fs::exists(m_file) ? bytesOf(m_file) : std::string();
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(after(row.before, [this] { return m_item.restoreChoice(true); }), row.restoredOn);
        EXPECT_EQ(after(row.before, [this] { return m_item.restoreChoice(false); }), row.restoredOff);
        EXPECT_EQ(after(row.before, [this] { return m_item.registerItem(); }), row.on);
        EXPECT_EQ(after(row.before, [this] { return m_item.unregisterItem(); }), row.off);
    }
}

TEST_F(LoginItemTest, AnInstalledProgramIsNamedWithoutItsFolder) {
    const fs::path elsewhere = m_directory.path() / "bin";
    const auto nameIn = [&](const fs::path &searched) {
        return programNameForEntry(QString::fromStdString(m_program.string()),
                                   {QString::fromStdString(searched.string())})
            .toStdString();
    };
    EXPECT_EQ(nameIn(m_program.parent_path()), "burnwick");
    EXPECT_EQ(nameIn(elsewhere), m_program.string()) << "not installed";
    test::writeProgram(elsewhere / "burnwick", "");
    EXPECT_EQ(nameIn(elsewhere), m_program.string()) << "another one is installed";
    fs::remove(elsewhere / "burnwick");
    fs::create_symlink(m_program, elsewhere / "burnwick");
    EXPECT_EQ(nameIn(elsewhere), "burnwick");
}

TEST(LoginItemOfThisProgram, IsInTheUsersConfiguration) {
    const TemporaryDirectory directory;
    const test::EnvironmentVariable home("HOME", directory.path().c_str());
    const test::EnvironmentVariable config("XDG_CONFIG_HOME", {});
    const std::pair<std::string, fs::path> rows[] = {
        {directory.path() / "chosen", directory.path() / "chosen"},
        {"", directory.path() / ".config"},
        {"relative/folder", directory.path() / ".config"},
    };
    for (const auto &[configHome, folder] : rows) {
        config.set(configHome.c_str());
        EXPECT_FALSE(platform::makeLoginItem()->registerItem()) << configHome;
        EXPECT_NE(bytesOf(folder / "autostart" / "burnwick.desktop")
                      .find("TryExec=" + QCoreApplication::applicationFilePath().toStdString()),
                  std::string::npos)
            << configHome;
        EXPECT_FALSE(platform::makeLoginItem()->unregisterItem());
    }
}

} // namespace
} // namespace burnwick
