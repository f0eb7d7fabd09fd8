// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/TerminalText.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

TEST(TerminalText, LetsNothingThroughThatCommandsTheTerminal) {
    const struct {
        const char *text;
        const char *printable;
    } rows[] = {
        {"\033]0;title\a", "\uFFFD]0;title\uFFFD"},
        {"two\nlines\r\t.", "two\uFFFDlines\uFFFD\uFFFD."},
        {"\u009b31m", "\uFFFD31m"}, // the control sequence introducer in one character
        {"\u202egnp", "\uFFFDgnp"}, // right-to-left override
        {"broken\xff", "broken\uFFFD"},
        {"模型 é e\u0301 😀", "模型 é e\u0301 😀"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(printableText(row.text), row.printable);
}

TEST(TerminalText, MeasuresColumns) {
    const struct {
        const char *text;
        int columns;
    } rows[] = {{"", 0}, {"opus", 4}, {"模型", 4}, {"e\u0301", 1}, {"😀", 2}, {"●…━▁\uFFFD", 5}};
    for (const auto &row : rows)
        EXPECT_EQ(columnsOf(row.text), row.columns) << row.text;
}

TEST(TerminalText, ElidesInTheMiddle) {
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
}

TEST(TerminalText, AlignsByColumns) {
    EXPECT_EQ(leftAligned("模型", 6), "模型  ");
    EXPECT_EQ(rightAligned("e\u0301", 3), "  e\u0301");
    EXPECT_EQ(leftAligned("longer", 3), "longer");
}

} // namespace
} // namespace burnwick
