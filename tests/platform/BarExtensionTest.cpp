// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "support/EnvironmentVariable.h"
#include "support/FakeService.h"
#include "support/LogTreeFixture.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <list>
#include <memory>

namespace burnwick {
namespace {

using State = BarExtension::State;

constexpr auto metadata = "data/gnome-shell/extensions/burnwick@com.burnwick/metadata.json";

/// The shell's part that manages extensions.
class FakeShell final : public FakeService {
public:
    FakeShell()
        : FakeService(QStringLiteral("fake-shell"), QStringLiteral("org.gnome.Shell"),
                      QStringLiteral("/org/gnome/Shell")) {}
    void own(const QString &name) const { connection().interface()->registerService(name); }
    void disown(const QString &name) const { connection().interface()->unregisterService(name); }

    bool knowsExtension = true;
    QVariantList arguments; ///< of the last call

protected:
    QDBusMessage answerTo(const QDBusMessage &call) override {
        arguments = call.arguments();
        return call.createReply(knowsExtension);
    }
};

/// The installed extension, and a command for settings whose one list is a file.
class BarExtensionTest : public testing::Test {
protected:
    BarExtensionTest() {
        test::writeFile(m_directory.path() / metadata, "{}");
        test::writeProgram(m_directory.path() / "bin/gsettings",
                           "#!/bin/sh\nlist=${0%/*}/list\n"
                           "[ \"$2 $3\" = 'org.gnome.shell enabled-extensions' ] || exit 1\n"
                           "case $1 in get) cat \"$list\" ;; set) echo \"$4\" >\"$list\" ;; esac\n");
        m_extension = platform::makeBarExtension();
    }
    bool becomes(State state) {
        return waitFor([&] { return m_extension->state() == state; });
    }

    const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher"),
                  ours = QStringLiteral("com.burnwick.Burnwick.ShellExtension");
    test::TemporaryDirectory m_directory;
    test::EnvironmentVariable m_data{"XDG_DATA_HOME", (m_directory.path() / "data").c_str()};
    test::EnvironmentVariable m_shared{"XDG_DATA_DIRS", "/nowhere"};
    test::EnvironmentVariable m_path{"PATH", ((m_directory.path() / "bin").string() + ":/bin").c_str()};
    FakeShell m_shell;
    std::unique_ptr<BarExtension> m_extension;
    std::list<State> m_changes;
};

TEST_F(BarExtensionTest, IsOfferedWhileTheShellRunsWithoutAnyStatusArea) {
    m_extension->setChangeHandler([this] { m_changes.push_back(m_extension->state()); });
    EXPECT_EQ(m_extension->state(), State::settled);
    EXPECT_TRUE(becomes(State::offered));
    for (const QString &name : {watcher, ours}) {
        m_shell.own(name);
        EXPECT_TRUE(becomes(State::settled)) << name.toStdString();
        m_shell.disown(name);
        EXPECT_TRUE(becomes(State::offered)) << name.toStdString();
    }
    m_shell.leave();
    EXPECT_TRUE(becomes(State::settled));
    EXPECT_EQ(m_changes, (std::list{State::offered, State::settled, State::offered, State::settled,
                                    State::offered, State::settled}));
    std::filesystem::remove(m_directory.path() / metadata);
    EXPECT_EQ(platform::makeBarExtension(), nullptr);
}

TEST_F(BarExtensionTest, TheShellEnablesAnExtensionThatItKnows) {
    ASSERT_TRUE(becomes(State::offered));
    m_extension->enable();
    EXPECT_TRUE(waitFor([this] { return !m_shell.arguments.isEmpty(); }));
    EXPECT_EQ(m_shell.calls, QStringList{QStringLiteral("EnableExtension")});
    EXPECT_EQ(m_shell.arguments, QVariantList{QStringLiteral("burnwick@com.burnwick")});
    m_shell.own(ours);
    EXPECT_TRUE(becomes(State::settled));
}

TEST_F(BarExtensionTest, AnUnknownOneIsAddedToTheUsersExtensionsForTheNextLogin) {
    m_shell.knowsExtension = false;
    const struct {
        const char *before, *after;
    } rows[] = {{"@as []", "['burnwick@com.burnwick']"},
                {"['a@b']", "['a@b', 'burnwick@com.burnwick']"},
                {"['burnwick@com.burnwick', 'a@b']", "['burnwick@com.burnwick', 'a@b']"}};
    for (const auto &[before, after] : rows) {
        m_extension = platform::makeBarExtension();
        ASSERT_TRUE(becomes(State::offered));
        test::writeFile(m_directory.path() / "bin/list", before);
        m_extension->enable();
        EXPECT_TRUE(becomes(State::atNextLogin));
        EXPECT_EQ(test::bytesOf(m_directory.path() / "bin/list"), std::string(after) + '\n');
    }
    m_shell.own(watcher);
    m_shell.own(ours);
    EXPECT_TRUE(becomes(State::settled));
}

} // namespace
} // namespace burnwick
