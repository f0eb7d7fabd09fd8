// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/TerminalStyle.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

TEST(TerminalStyle, FollowsTheTerminalAndItsUser) {
    using enum TerminalColors;
    const struct {
        bool isTerminal;
        const char *noColor, *term, *colorTerm;
        TerminalColors colors;
    } rows[] = {
        {true, nullptr, "xterm-256color", nullptr, basic},
        {true, nullptr, "xterm", "truecolor", full},
        {true, nullptr, "xterm", "24bit", full},
        {true, nullptr, "xterm", "yes", basic},
        {true, "1", "xterm", "truecolor", none},
        {true, "", "xterm", nullptr, basic}, // only a value says no
        {true, nullptr, "dumb", "truecolor", none},
        {true, nullptr, nullptr, nullptr, none},
        {false, nullptr, "xterm", "truecolor", none},
    };
    for (const auto &row : rows)
        EXPECT_EQ(terminalColorsFor(row.isTerminal, row.noColor, row.term, row.colorTerm), row.colors);
}

TEST(TerminalStyle, StylesTheTitle) {
    const StatusTitle title = buildStatusTitle({999, 0, 0, 0}, 4.5, std::nullopt, StatusIndicator::orange);
    const auto styled = [&title](TerminalColors colors) {
        return styledTitle(title, StatusIndicator::orange, colors);
    };
    EXPECT_EQ(styled(TerminalColors::none), "999 | $4.50 | s--  ●");
    EXPECT_EQ(styled(TerminalColors::basic),
              "\033[1m999\033[0m\033[2m | \033[0m$\033[1m4.50\033[0m\033[2m | \033[0m"
              "\033[2ms\033[0m\033[1m--\033[0m  \033[33m●\033[0m");
    EXPECT_TRUE(styled(TerminalColors::full).ends_with("  \033[38;2;252;189;46m●\033[0m"));
}

} // namespace
} // namespace burnwick
