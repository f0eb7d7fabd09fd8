// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/macos/rules/TerminalScript.h"

namespace burnwick {

std::string terminalScript(std::string_view shell, std::string_view command) {
    std::string script = "tell application \"Terminal\"\n    activate\n    do script \"";
    for (const char character : shell) {
        if (character == '"' || character == '\\')
            script += '\\';
        script += character;
    }
    return script.append(" -l -c '").append(command) + "'; exit\"\nend tell";
}

} // namespace burnwick
