// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "display/DisplayText.h"

#include "support/HostileTexts.h"

#include <QChar>

#include <gtest/gtest.h>

namespace burnwick {
namespace {

TEST(DisplayText, IsOneLineWithoutUnseenCharacters) {
    for (const auto &hostile : test::hostileTexts())
        EXPECT_EQ(displayText(hostile.text), hostile.shown) << hostile.what;
    for (const char *name : {"", "claude-opus-4-5", "模型 é e\u0301 😀", "עברית", "\uFFFD"})
        EXPECT_EQ(displayText(name), name);
}

TEST(DisplayText, AgreesWithUnicodeOnEveryCharacter) {
    for (char32_t character = 0; character <= QChar::LastValidCodePoint; ++character) {
        if (QChar::isSurrogate(character))
            continue;
        const QChar::Category category = QChar::category(character);
        const bool unseen = category == QChar::Other_Control || category == QChar::Other_Format ||
                            category == QChar::Separator_Line || category == QChar::Separator_Paragraph;
        // Later editions of Unicode may assign more of them.
        if (category != QChar::Other_NotAssigned && category != QChar::Mark_NonSpacing) {
            EXPECT_EQ(isUnseen(character), unseen) << std::hex << static_cast<std::uint32_t>(character);
        }
    }
}

TEST(DisplayText, ALongTextLosesItsMiddleInWholeCharacters) {
    const struct {
        const char *text;
        std::size_t longest;
        const char *shown;
    } rows[] = {
        {"abcdef", 6, "abcdef"},      {"abcdefg", 6, "abc…fg"}, {"abcdefg", 2, "a…"},
        {"äöüäöü", 6, "äöüäöü"},      {"äöüäöüß", 5, "äö…üß"},  {"😀😀😀😀", 3, "😀…😀"},
        {"ab\ncd\n", 4, "ab…\uFFFD"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(displayText(row.text, row.longest), row.shown);
}

} // namespace
} // namespace burnwick
