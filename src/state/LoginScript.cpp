// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "state/LoginScript.h"

namespace burnwick {

std::string terminalLoginScript(std::string_view shell) {
    std::string script = "tell application \"Terminal\"\n    activate\n    do script \"";
    for (const char character : shell) {
        if (character == '"' || character == '\\')
            script += '\\';
        script += character;
    }
    script += " -l -c '";
    script += loginCommand;
    return script += "'; exit\"\nend tell";
}

} // namespace burnwick
