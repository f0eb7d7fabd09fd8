// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/TerminalColumns.h"

#include <cwchar>

#include <locale.h>
#include <xlocale.h>

namespace burnwick::platform {

int terminalColumnsOf(char32_t character) {
    // Every macOS has this locale; "C.UTF-8" is newer.
    static const locale_t unicode = ::newlocale(LC_CTYPE_MASK, "en_US.UTF-8", nullptr);
    return ::wcwidth_l(static_cast<wchar_t>(character), unicode);
}

} // namespace burnwick::platform
