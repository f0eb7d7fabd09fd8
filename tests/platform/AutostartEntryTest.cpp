// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/AutostartEntry.h"
#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <QtCore/QProcess>

namespace burnwick {
namespace {

constexpr std::string_view freshEntry = "[Desktop Entry]\n"
                                        "Exec=burnwick\n"
                                        "TryExec=burnwick\n"
                                        "Type=Application\n"
                                        "Name=Burnwick\n"
                                        "Comment=Token usage, cost and quota of Claude Code at a glance\n"
                                        "Icon=burnwick\n"
                                        "Terminal=false\n";

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
    {"/a/%f %%/burnwick", R"("/a/%%f %%%%/burnwick")"},
    {"/a/x;y&z|(1)<2>*?#~/burnwick", R"("/a/x;y&z|(1)<2>*?#~/burnwick")"},
    {"/a/two\nlines\tand\rmore/burnwick", R"("/a/two\nlines\tand\rmore/burnwick")"},
};

TEST(AutostartEntry, QuotesTheProgram) {
    for (const Program &program : programs)
        EXPECT_EQ(execValue(program.path), program.exec) << program.path;
}

TEST(AutostartEntry, IsValidForEachProgram) {
    const test::TemporaryDirectory directory;
    for (const Program &program : programs) {
        const auto file = directory.path() / "burnwick.desktop";
        test::writeFile(file, autostartEntry({}, program.path));
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
    };
    for (const Case &c : cases)
        EXPECT_EQ(startsAtLogin(c.entry), c.on) << c.entry;
}

TEST(AutostartEntry, ChangesOnlyWhatKeepsTheProgramFromStarting) {
    struct Case {
        const char *existing;
        const char *entry;
    };
    const Case cases[] = {
        {"", freshEntry.data()},
        {"\x7f"
         "ELF junk\nExec=other\n",
         freshEntry.data()},
        // Already right, though laid out in another way.
        {"[Desktop Entry]\nName=B\nTryExec = burnwick\nExec = burnwick\nX-GNOME-Autostart-Delay=9",
         "[Desktop Entry]\nName=B\nTryExec = burnwick\nExec = burnwick\nX-GNOME-Autostart-Delay=9"},
        // Switched off by the user or by the desktop's settings.
        {"[Desktop Entry]\nExec=burnwick\nTryExec=burnwick\nHidden=true\nName[de]=B\n",
         "[Desktop Entry]\nExec=burnwick\nTryExec=burnwick\nName[de]=B\n"},
        {"[Desktop Entry]\nExec=burnwick\nTryExec=burnwick\nX-GNOME-Autostart-enabled=false\n",
         "[Desktop Entry]\nExec=burnwick\nTryExec=burnwick\n"},
        // The program has moved.
        {"# mine\n[Desktop Entry]\nName=B\nExec=/old/burnwick\nX-GNOME-Autostart-Delay=9\n"
         "[Desktop Action x]\nExec=keep\nHidden=true\n",
         "# mine\n[Desktop Entry]\nExec=burnwick\nTryExec=burnwick\nName=B\nX-GNOME-Autostart-Delay=9\n"
         "[Desktop Action x]\nExec=keep\nHidden=true\n"},
    };
    for (const Case &c : cases) {
        const std::string entry = autostartEntry(c.existing, "burnwick");
        EXPECT_EQ(entry, c.entry) << c.existing;
        EXPECT_TRUE(startsAtLogin(entry)) << c.existing;
    }
}

} // namespace
} // namespace burnwick
