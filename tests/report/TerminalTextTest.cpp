// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/TerminalText.h"

#include "forms/TerminalStyle.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

TEST(TerminalText, ReplacesUnseenCharactersAndThoseOfUnknownWidth) {
    EXPECT_EQ(printableText("\033[2J\u202e\U0010ffff模 é"), "\uFFFD[2J\uFFFD\uFFFD模 é");
}

TEST(TerminalText, MeasuresElidesAndAlignsByColumns) {
    const std::pair<const char *, int> widths[] = {{"", 0},        {"opus", 4}, {"模型", 4},
                                                   {"e\u0301", 1}, {"😀", 2},    {"●…━▁\uFFFD", 5}};
    for (const auto &[text, columns] : widths)
        EXPECT_EQ(columnsOf(text), columns) << text;
    const struct {
        const char *text;
        int columns;
        const char *elided;
    } rows[] = {
        {"abcdefgh", 8, "abcdefgh"}, {"abcdefgh", 7, "abc…fgh"},
        {"abcdefgh", 6, "abc…gh"},   {"abcdefgh", 1, "…"},
        {"模型名称", 8, "模型名称"}, {"模型名称", 7, "模…称"}, // half a wide character does not fit
        {"abcde\u0301f", 4, "ab…f"}, {"abcdee\u0301", 4, "ab…e\u0301"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(elidedInMiddle(row.text, row.columns), row.elided);
    EXPECT_EQ(leftAligned("模型", 6), "模型  ");
    EXPECT_EQ(rightAligned("e\u0301", 3), "  e\u0301");
    EXPECT_EQ(leftAligned("longer", 3), "longer");
}

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
        {true, "", "xterm", nullptr, basic}, // an empty value has no effect
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
