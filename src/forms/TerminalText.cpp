// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/TerminalText.h"

#include "display/DisplayText.h"
#include "platform/TerminalColumns.h"

#include <QtCore/QChar>
#include <QtCore/QString>

#include <algorithm>

namespace burnwick {

namespace {

std::u32string decoded(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toStdU32String();
}

std::string encoded(std::u32string_view text) {
    return QString::fromUcs4(text.data(), static_cast<qsizetype>(text.size())).toStdString();
}

int columnsOf(std::u32string_view printable) {
    int columns = 0;
    for (const char32_t character : printable)
        columns += std::max(0, platform::terminalColumnsOf(character));
    return columns;
}

/// The length of the longest beginning of [first, last) that fits into the columns.
template <typename Iterator>
std::size_t lengthFitting(Iterator first, Iterator last, int columns) {
    std::size_t length = 0;
    for (; first != last; ++first, ++length) {
        columns -= std::max(0, platform::terminalColumnsOf(*first));
        if (columns < 0)
            break;
    }
    return length;
}

std::string blanks(int count) {
    return std::string(static_cast<std::size_t>(std::max(0, count)), ' ');
}

} // namespace

std::string printableText(std::string_view text) {
    std::u32string characters = decoded(displayText(text));
    for (char32_t &character : characters) {
        if (platform::terminalColumnsOf(character) < 0)
            character = QChar::ReplacementCharacter;
    }
    return encoded(characters);
}

int columnsOf(std::string_view printable) {
    return columnsOf(decoded(printable));
}

std::string elidedInMiddle(std::string_view printable, int columns) {
    const std::u32string text = decoded(printable);
    if (columnsOf(text) <= columns)
        return std::string(printable);
    const int forTail = (columns - 1) / 2;
    std::size_t tail = lengthFitting(text.rbegin(), text.rend(), forTail);
    const std::size_t head = lengthFitting(text.begin(), text.end(), columns - 1 - forTail);
    // A mark without its base character would combine with the ellipsis.
    while (tail > 0 && QChar::isMark(text[text.size() - tail]))
        --tail;
    return encoded(text.substr(0, head) + U'…' + text.substr(text.size() - tail));
}

std::string leftAligned(std::string_view printable, int columns) {
    return std::string(printable) + blanks(columns - columnsOf(printable));
}

std::string rightAligned(std::string_view printable, int columns) {
    return blanks(columns - columnsOf(printable)) + std::string(printable);
}

} // namespace burnwick
