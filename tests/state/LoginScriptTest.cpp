// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "state/LoginScript.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

TEST(LoginScript, KeepsAStrangePathInsideItsString) {
    EXPECT_EQ(terminalLoginScript("/bin/zsh"), "tell application \"Terminal\"\n"
                                               "    activate\n"
                                               "    do script \"/bin/zsh -l -c 'claude auth login'; exit\"\n"
                                               "end tell");
    struct Case {
        const char *shell;
        const char *inScript;
    };
    const Case cases[] = {
        {"/opt/\" & evil & \"", R"(do script "/opt/\" & evil & \" -l -c )"},
        {R"(/opt/\")", R"(do script "/opt/\\\" -l -c )"},
    };
    for (const Case &c : cases)
        EXPECT_NE(terminalLoginScript(c.shell).find(c.inScript), std::string::npos) << c.shell;
}

} // namespace
} // namespace burnwick
