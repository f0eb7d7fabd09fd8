// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/TerminalColumns.h"

#include <cwchar>

#include <locale.h>

namespace burnwick::platform {

int terminalColumnsOf(char32_t character) {
    static const locale_t unicode = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    const locale_t previous = ::uselocale(unicode);
    const int columns = ::wcwidth(static_cast<wchar_t>(character));
    ::uselocale(previous);
    return columns;
}

} // namespace burnwick::platform
