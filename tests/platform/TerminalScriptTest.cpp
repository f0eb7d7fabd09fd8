// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/macos/TerminalScript.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

TEST(TerminalScript, KeepsAStrangePathInsideItsString) {
    const struct {
        const char *shell, *inScript;
    } rows[] = {
        {"/bin/zsh", "/bin/zsh"},
        {"/opt/\" & evil & \"", R"(/opt/\" & evil & \")"},
        {R"(/opt/\")", R"(/opt/\\\")"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(terminalScript(row.shell, "claude auth login"), "tell application \"Terminal\"\n"
                                                                  "    activate\n"
                                                                  "    do script \"" +
                                                                      std::string(row.inScript) +
                                                                      " -l -c 'claude auth login'; exit\"\n"
                                                                      "end tell");
}

} // namespace
} // namespace burnwick
